' An error log name that is a link is not written through; the error window says why
sub main
  bogus
  print "goes on"
endsub
