' An error log of exactly 51,200 bytes still receives a record
sub main
  print "start"
  oops
  print "end"
endsub
