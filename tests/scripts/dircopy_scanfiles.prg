' dircopy with scan files: a target described by one is not scanned and its file is rewritten;
' a source taken from one; names that lead out of the root; a run that did not finish
sub main
  errorshow off
  set $f$ fileopen "dst.scn" write
  filewrite $f$ "dst*sub"
  filewrite $f$ "old.txt*45293.6277777778*32*5"
  fileclose $f$
  print "-- into the target's scan file"
  dircopy src dst.scn {quiet}
  print "-- the scan file now matches the source, and so does the folder"
  dircopy src dst.scn {quiet preview}
  dircopy src dst {quiet preview}
  print "-- a change the scan file does not know about is not seen"
  del dst/sub/b.txt
  dircopy src dst.scn {quiet preview}
  print "-- unless the last run did not finish"
  set $f$ fileopen "dst.scn.busy" write
  fileclose $f$
  dircopy src dst.scn {quiet}
  dircopy src dst {quiet preview}
  if fileexists dst.scn.busy
    print "the mark of the run stayed"
  endif
  print "-- a source scan file; names that lead outside are skipped"
  set $f$ fileopen "bad.scn" write
  filewrite $f$ "src*sub"
  filewrite $f$ "..*45000*32*5"
  filewrite $f$ "a.txt*45293.6277777778*32*10"
  fileclose $f$
  dircopy bad.scn out {quiet}
  dir out/*.*
endsub

sub on_error
  print "  warning: $param[0]$"
endsub
