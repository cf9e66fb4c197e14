' An if whose condition is false, without else or endif
sub main
  print "before"
  if equal a b
    print "FAIL"
endsub
