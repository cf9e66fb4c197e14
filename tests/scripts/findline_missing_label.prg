' goto a label that doesn't exist
sub main
  print "before"
  goto nowhere
  print "FAIL"
endsub
