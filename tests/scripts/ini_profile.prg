' INI files: readini through the profile reader, writeini edits and readinisection listings
sub main
  set $v$ readini settings.ini general owner "none"
  print "01 names are case-blind, values trimmed: [$v$]"
  set $v$ readini settings.ini GENERAL title "none"
  print "02 double quotes are removed: [$v$]"
  set $v$ readini settings.ini General Motto "none"
  print "03 single quotes are removed: [$v$]"
  set $v$ readini settings.ini general empty "none"
  print "04 an empty value is not the default: [$v$]"
  set $v$ readini settings.ini general novalue "none"
  print "05 a line without = is no key: [$v$]"
  set $v$ readini settings.ini general hidden "none"
  print "06 a comment is no key: [$v$]"
  set $v$ readini settings.ini " paths " TEMP "none"
  print "07 blanks around names: [$v$]"
  set $v$ readini missing.ini paths temp "fallback  "
  print "08 a missing file gives the default without trailing blanks: [$v$]"
  set $v$ readini settings.ini nosuch temp "fallback"
  print "09 a missing section gives the default: [$v$]"
  set $v$ readini adir.ini paths temp "fallback"
  print "10 a directory gives the default: [$v$]"
  print "== writeini"
  writeini settings.ini general OWNER "Grace Hopper"
  writeini settings.ini Paths Logs "E:\Logs"
  writeini settings.ini "New Section" Colour blue
  writeini settings.ini general empty {delete}
  writeini settings.ini general Added
  call list settings.ini general
  call list settings.ini paths
  call list settings.ini "new section"
  set $v$ readini settings.ini general owner "none"
  print "11 the new value reads back: [$v$]"
  writeini settings.ini paths ""
  call list settings.ini paths
  set $v$ readini settings.ini paths temp "gone"
  print "12 the deleted section is gone: [$v$]"
  set $v$ readini settings.ini "new section" colour "none"
  print "13 the sections after it stay: [$v$]"
  print "== a new file"
  writeini created.ini First a 1
  writeini created.ini First b
  writeini created.ini Second c 3
  call list created.ini first
  call list created.ini second
  print "== failures"
  readinisection missing.ini general
  print "14 count after a failure: $readinisection[0]$"
  writeini adir.ini s k v
  writeini missing.ini general nothing {delete}
  if fileexists missing.ini
    print "FAIL 15"
  else
    print "15 deleting from a missing file creates nothing"
  endif
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
