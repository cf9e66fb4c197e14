' adjustmaster: the first run without a scan file, then edits on both sides of a synchronised
' pair: every row of the table, folders, an excluded name; missing and unreadable arguments
sub main
  errorshow off
  exclude ".log"
  set $n$ adjustmaster master copy base.scn Laptop Server
  print "first run: [$n$]"
  dirscan copy base.scn
  ' the copy's edits
  call append copy/changed.txt "more"
  del copy/gone.txt
  call append copy/both.txt "theirs, longer"
  call append copy/same.txt "same"
  call append copy/mrem.txt "more"
  del copy/kept.txt
  del copy/olddir/o.txt
  rd copy/olddir
  del copy/keepdir/k.txt
  rd copy/keepdir
  call append copy/skip.log "more"
  call append copy/new.txt "new"
  md copy/newdir
  call append copy/newdir/f.txt "new"
  md copy/typed
  call append copy/typed/t.txt "new"
  call append master/typed "mine"
  ' the master's edits
  call append master/both.txt "mine"
  call append master/same.txt "same"
  del master/mrem.txt
  call append master/kept.txt "mine"
  call append master/keepdir/mine.txt "mine"
  call append master/mine.txt "mine"
  set $n$ adjustmaster master copy base.scn Laptop Server
  print "conflicts: [$n$]"
  call show changed.txt
  call show gone.txt
  call show both.txt
  call show same.txt
  call show mrem.txt
  call show kept.txt
  call show olddir/o.txt
  call show keepdir/k.txt
  call show keepdir/mine.txt
  call show skip.log
  call show new.txt
  call show newdir/f.txt
  call show mine.txt
  call show "both (Server).txt" both.txt
  call show "typed (Server)/t.txt" typed/t.txt
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
