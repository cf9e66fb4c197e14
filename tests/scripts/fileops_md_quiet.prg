' "quiet" on md hides the error window for that statement only; the error is still logged
sub main
  md taken.txt {quiet}
  print "after the quiet md"
  md taken.txt
  print "after the plain md"
endsub
