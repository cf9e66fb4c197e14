' del: one file or the files a pattern matches; directories and read-only files are kept
sub main
  errorshow off
  print "-- one file, then a pattern that ignores case"
  del d/one.txt
  del d/*.LOG
  dir d/
  print "-- read-only files are kept, the others go"
  setattrib d/keep1.txt +R
  setattrib d/keep2.txt +R
  del d/*.txt
  dir d/
  print "-- refusals"
  del d/missing.txt
  del d/*.zip
  del nowhere/*.txt
  del d/sub
  del d/s*
  del
  print "-- what is left"
  dir d/ {sub}
endsub

sub on_error
  print "  warning: $param[0]$"
  if "$param[4]$" <> ""
    print "  (with the system's text)"
  endif
endsub
