' load of a file that doesn't exist is fatal
sub main
  print "before"
  load no_such_file.prg
  print "FAIL"
endsub
