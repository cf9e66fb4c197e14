' An until whose condition is false, without repeat
sub main
  print "before"
  until 1 = 2
  print "FAIL"
endsub
