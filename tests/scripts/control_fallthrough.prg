' Where a run starts and ends: at the line of sub main, and at the endsub that returns from main
print "FAIL a line before any subroutine"
sub early
  print "02 early was called"
endsub
sub main
  print "01 main starts"
  call early
  print "03 main has no endsub and runs on"
sub next_one
  print "04 the sub line does nothing; this body runs as part of main"
endsub
print "FAIL the endsub above returned from main and ended the run"
sub later
  print "FAIL later"
endsub
