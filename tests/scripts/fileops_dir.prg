' dir: listings sorted by name ignoring case, with subdirectories ("sub"), directories only
' ("dirsonly"), name patterns, and a plain file name
sub main
  errorshow off
  print "-- a directory"
  dir tree
  print "-- with subdirectories, as paths relative to the listed directory"
  dir tree/ {sub}
  print "-- directories only"
  dir tree/ {sub dirsonly}
  print "-- a pattern, here and in every subdirectory"
  dir tree/*.TXT
  dir tree/*.txt {sub}
  print "-- one file, and a name written in another case"
  dir tree/Zeta.txt
  dir tree/ZETA.TXT
  dir tree/INNER.txt {sub}
  print "-- an empty directory lists nothing"
  md tree/new
  dir tree/new
  print "-- refusals"
  dir tree/missing.txt
  dir nowhere/*.txt
endsub

sub on_error
  print "  warning: $param[0]$"
  if "$param[4]$" <> ""
    print "  (with the system's text)"
  endif
endsub
