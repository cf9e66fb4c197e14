' Never run: quillerc is started without a script file.
sub main
  print "FAIL"
endsub
