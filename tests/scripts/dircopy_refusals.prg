' dircopy refuses what would lose data: a missing source, folders inside each other, an empty
' source against a full target (unless asked and confirmed); ask's answers; popup on a pipe
sub main
  errorshow off
  md empty
  dircopy missing dst {quiet}
  dircopy src src/inner {quiet}
  dircopy src/.. src {quiet}
  print "-- an empty source"
  dircopy empty dst {quiet}
  dircopy empty dst {quiet ask}
  dir dst/*.*
  print "-- ask: No, then Yes"
  dircopy src dst {quiet ask}
  dircopy src dst {quiet ask}
  dir dst/*.*
  dircopy empty dst {quiet ask}
  dir dst/*.*
  exclude ""
  popup "Working" "line two" {cancel}
  popup ""
endsub

sub on_error
  print "  warning: $param[0]$"
endsub
