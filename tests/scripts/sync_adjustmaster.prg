' adjustmaster: the first run without a scan file, then edits on both sides of a synchronised
' pair: every row of the table, folders, an excluded name; missing and unreadable arguments
sub main
  errorshow off
  exclude ".log"
  set $n$ adjustmaster master copy base.scn Laptop Server
  print "first run: [$n$]"
  dirscan copy base.scn
  ' the edits on both sides: the removals and new folders here, the writes in edits.txt
  del copy/gone.txt
  del copy/kept.txt
  del copy/olddir/o.txt
  rd copy/olddir
  del copy/keepdir/k.txt
  rd copy/keepdir
  md copy/newdir
  md copy/typed
  del master/mrem.txt
  call each edits.txt
  set $n$ adjustmaster master copy base.scn Laptop Server
  print "conflicts: [$n$]"
  call each shown.txt
  if direxists master/olddir
    print "olddir stayed"
  endif
  print "-- nothing left to adjust once mirrored"
  dircopy master copy {quiet}
  dirscan copy base.scn
  set $n$ adjustmaster master copy base.scn
  print "again: [$n$]"
  print "-- refusals"
  set $n$ adjustmaster master nowhere base.scn
  print "missing copy: [$n$]"
  set $n$ adjustmaster master copy master
  print "unreadable base: [$n$]"
endsub

' Runs "call LINE" for each line of file $param[1]$.
sub each
  set $list$ fileopen "$param[1]$"
  set $line$ fileread $list$
  while ^$line$^ <> "(eof)"
    call $line$
    set $line$ fileread $list$
  endwhile
  fileclose $list$
endsub

sub append
  set $h$ fileopen "$param[1]$" append
  filewrite $h$ "$param[2]$"
  fileclose $h$
endsub

' a master file: "-" when missing, "=" when it matches the copy's file (of the second
' parameter's name, else its own), "own" otherwise
sub show
  set $c$ "$param[2]$"
  if "$c$" = ""
    set $c$ "$param[1]$"
  endif
  set $s$ "-"
  if fileexists "master/$param[1]$"
    set $s$ "own"
  endif
  if filesame "master/$param[1]$" "copy/$c$"
    set $s$ "="
  endif
  print "$param[1]$ $s$"
endsub

sub on_error
  print "warning: $param[0]$"
endsub
