' With {quiet}, a missing label or subroutine is not reported and the statement does nothing
sub main
  goto nowhere {quiet}
  print "after goto"
  call nothere {quiet}
  print "after call"
  call shown
  print "end"
endsub
sub shown
  print "in shown"
endsub
