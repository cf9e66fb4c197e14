' dirscan: the walk, the sorted scan file, options from the third argument and from the braces,
' a replaced scan file, the remembered count, a missing directory
sub main
  dirscan tree all.scn
  call show all.scn
  dirscan tree top.scn "NoSub Progress"
  call show top.scn
  md tree/none
  dirscan tree/none empty.scn {quiet nosub}
  call show empty.scn
  ' an existing scan file is replaced
  dirscan tree/Docs all.scn {progress}
  call show all.scn
  set $n$ readreg "HKEY_LOCAL_MACHINE\Software\Corvale\Quiller\DirScans" "tree/Docs"
  print "remembered: $n$"
  dirscan tree/missing x.scn
  dirscan tree/a.txt x.scn
endsub

' the lines of a scan file on one output line, so their order is checked too; "/" for "\"
sub show
  set $h$ fileopen "$param[1]$"
  set $all$ ""
  set $l$ fileread $h$
  while "$l$" <> "(eof)"
    set $l$ replacestring "$l$" "\" "/"
    set $all$ "$all$[$l$]"
    set $l$ fileread $h$
  endwhile
  fileclose $h$
  print "$all$"
endsub
