' A while whose condition is false, without endwhile
sub main
  print "before"
  while 1 = 2
    print "FAIL"
  print "FAIL"
endsub
