' Output that can't be written ends the run with a message on stderr
sub main
  print "lost on a full disk"
  bogus
endsub
