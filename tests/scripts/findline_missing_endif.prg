' An if whose condition is false, without else or endif: a fatal error, which on_error does not
' get to handle
sub main
  print "before"
  if equal a b
    print "FAIL"
endsub

sub on_error
  print "FAIL on_error ran after a fatal error"
endsub
