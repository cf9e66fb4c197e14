' A fatal error ends the run; on_error does not get to run
sub main
  print "before"
  if 1 = 2
    print "FAIL"
endsub

sub on_error
  print "FAIL on_error ran after a fatal error"
endsub
