' rename: a bare new name stays in the same directory, a path moves; an existing target is
' never replaced, and a directory can't move into itself
sub main
  errorshow off
  print "-- renames and moves"
  rename old.txt new.txt
  rename d/one.txt two.txt
  rename d/two.txt e/three.txt
  rename new.txt NEW.txt
  rename d d2
  dir ./*.txt {sub}
  if direxists d2
    print "d became d2"
  endif
  print "-- refusals"
  rename missing.txt x.txt
  rename NEW.txt e/three.txt
  rename e e/inside
  rename e ./e/inside/deeper
  rename e/three.txt nodir/x.txt
  rename NEW.txt
  rename *.txt x.txt
  rename / x
  print "-- nothing moved"
  dir e/
  dir NEW.txt
endsub

sub on_error
  print "  warning: $param[0]$"
  if "$param[4]$" <> ""
    print "  (with the system's text)"
  endif
endsub
