' INI files: readini through the profile reader, writeini edits and readinisection listings
sub main
  call read settings.ini general owner none
  call read settings.ini GENERAL title none
  call read settings.ini General Motto none
  call read settings.ini general empty none
  call read settings.ini general novalue none
  call read settings.ini general hidden none
  call read settings.ini " paths " TEMP none
  call read missing.ini paths temp "fallback  "
  call read settings.ini nosuch temp none
  call read adir.ini paths temp none
  print "== writeini"
  writeini settings.ini general OWNER "Grace Hopper"
  writeini settings.ini Paths Logs "E:\Logs"
  writeini settings.ini "New Section" Colour blue
  writeini settings.ini general empty {delete}
  writeini settings.ini general Added
  call list settings.ini general
  call list settings.ini paths
  call list settings.ini "new section"
  call read settings.ini general owner none
  writeini settings.ini paths ""
  call list settings.ini paths
  call read settings.ini paths temp none
  call read settings.ini "new section" colour none
  print "== a new file"
  writeini created.ini First a 1
  writeini created.ini First b
  writeini created.ini Second c 3
  call list created.ini first
  call list created.ini second
  print "== failures"
  readinisection missing.ini general
  print "01 count after a failure: $readinisection[0]$"
  writeini adir.ini s k v
  writeini missing.ini general nothing {delete}
  if fileexists missing.ini
    print "FAIL 02"
  else
    print "02 deleting from a missing file creates nothing"
  endif
endsub

''' Prints readini of file $param[1]$, section $param[2]$, key $param[3]$, default $param[4]$.
sub read
  set $v$ readini $param[1]$ "$param[2]$" $param[3]$ "$param[4]$"
  print ^$param[1]$ [$param[2]$] $param[3]$ = [$v$]^
endsub

sub list
  readinisection $param[1]$ "$param[2]$"
  print "[$param[2]$] $readinisection[0]$ entries"
  set $i$ 1
  while $i$ <= $readinisection[0]$
    print ^  $readinisection[i]$^
    set $i$ $i$ + 1
  endwhile
endsub
