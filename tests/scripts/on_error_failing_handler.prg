' A failure inside on_error is logged and shown but not handed over to on_error again
sub main
  print "main starts"
  bogus
  print "main goes on"
endsub

sub on_error
  print "on_error runs for line $param[2]$"
  alsobogus
  print "on_error ends"
endsub
