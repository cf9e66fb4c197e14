' Warnings: the error window (on stderr) and the records of the error log
sub main
  print "start"
  frobnicate the widget now
  BOGUS
  set $v$ "val"
  bogus2 $v$
  if foo a b
    print "FAIL an unknown test is false"
  else
    print "an unknown test is false"
  endif
  errorshow off
  hidden warning {quiet}
  print "after a warning that was not shown"
  errorshow on
  bogus3 %QTEST_ENVVAL% $v$
  call helper
  print "end"
endsub

sub helper
  shown again
endsub
