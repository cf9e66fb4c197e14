' An error log longer than 51,200 bytes receives nothing; the window says so instead
sub main
  print "start"
  oops
  print "end"
endsub
