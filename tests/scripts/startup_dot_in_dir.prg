' Never run: started as my.dir/job, which has a "." in its directory name.
sub main
  print "FAIL"
endsub
