' md makes missing parents and accepts an existing directory; rd removes an empty directory,
' and with "severe" a whole tree; roots and "." or ".." are refused
sub main
  errorshow off
  print "-- md"
  md a/b/c
  md a/b/c
  md a\b\d
  md a/b/d/
  if direxists a/b/c
    print "a/b/c is there"
  endif
  if direxists a/b/d
    print "a/b/d is there"
  endif
  md file.txt
  md file.txt/sub
  md a/*
  md
  print "-- rd"
  rd a/b/c
  if not direxists a/b/c
    print "a/b/c is gone"
  endif
  rd a
  rd a/b/d/ {severe}
  if not direxists a/b/d
    print "a/b/d is gone"
  endif
  print "-- rd with severe takes read-only files too"
  md a/b/d
  copy file.txt a/b/d/
  setattrib a/b/d/file.txt +R
  rd a {severe}
  if not direxists a
    print "a is gone"
  endif
  print "-- refusals"
  rd a
  rd file.txt
  rd / {severe}
  rd C: {severe}
  rd C:\ {severe}
  rd keep/.. {severe}
  rd keep/. {severe}
  rd keep/* {severe}
  rd
  if fileexists keep/k.txt
    print "keep/k.txt is still there"
  endif
endsub

sub on_error
  print "  warning: $param[0]$"
  if "$param[4]$" <> ""
    print "  (with the system's text)"
  endif
endsub
