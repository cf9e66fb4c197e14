' dircopy: new, changed, renamed and removed entries, filters on either side, a file that meets
' a folder; the preview and the runs after it
sub main
  errorshow off
  exclude ".bak"
  exclude "keep" {include}
  exclude "dst/old.txt"
  setattrib dst/ro.txt +R
  print "-- the preview changes nothing"
  dircopy ./src ./dst {preview quiet}
  print "-- the run"
  dircopy ./src ./dst {quiet}
  dir dst/*.txt {sub}
  dir dst/*.bak
  print "-- the file that met a folder comes next time"
  dircopy ./src ./dst {preview quiet}
  dircopy ./src ./dst {quiet}
  dir dst/f
  dircopy ./src ./dst {preview quiet}
  print "-- reset filters: the excluded files come now"
  exclude "" {reset}
  dircopy ./src ./dst {preview quiet}
  print "-- the source is untouched"
  dir src/*.* {sub}
endsub

sub on_error
  print "  warning: $param[0]$"
endsub
