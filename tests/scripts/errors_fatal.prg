' A warning, then a fatal error: both are logged, both windows shown, and the run ends
sub main
  print "before"
  notacommand
  print "between"
  endwhile
  print "FAIL after the fatal error"
endsub
