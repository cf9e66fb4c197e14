' Endless recursion ends at the call-depth limit with a fatal error, on_error or not
sub main
  call main
endsub

sub on_error
  print "FAIL on_error ran"
endsub
