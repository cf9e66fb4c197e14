' call a subroutine that doesn't exist
sub main
  print "before"
  call nosuchsub with parameters
  print "FAIL"
endsub
