' With errorshow off even a fatal error shows no window; it is logged and the run ends
sub main
  errorshow off
  print "before"
  endwhile
  print "FAIL"
endsub
