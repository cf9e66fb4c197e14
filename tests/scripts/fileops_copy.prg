' copy: one file to a new name or into a directory, wildcards that ignore case, replacing, and
' every refusal (each statement reports at most one warning)
sub main
  errorshow off
  print "-- one file to a new name keeps its time"
  copy src/a.txt out/new.txt
  dir out/new.txt
  print "-- wildcards ignore case; directories are never copied"
  md out/all
  copy src/*.TXT out/all
  dir out/all/
  print "-- a file is replaced, a read-only one is kept"
  copy src/c.log out/old.txt
  dir out/old.txt
  setattrib out/locked.txt +R
  copy src/a.txt out/locked.txt
  dir out/locked.txt
  print "-- refusals"
  copy src/a.txt src/a.txt
  copy src/*.txt ./src
  copy src/sub out/
  copy src/*.zip out/
  copy src/missing.txt out/
  copy src/*.txt out/none
  copy src/*.txt out/new.txt
  copy src/a.txt out/nodir/x.txt
  copy src/a.txt
  md out/x/a.txt
  copy src/a.txt out/x
  print "-- the sources are unchanged"
  dir src/*.*
endsub

sub on_error
  print "  warning: $param[0]$"
  if "$param[4]$" <> ""
    print "  (with the system's text)"
  endif
endsub
