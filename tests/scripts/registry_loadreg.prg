' loadreg: a REGEDIT4 file (Windows-1252, CR LF), a version 5.00 file (UTF-16LE), a file with bad
' lines, and a missing file
sub main
  loadreg v4.reg
  $k$ = "HKEY_CURRENT_USER\Software\Corvale\Tools"
  call show DEFAULT
  call show Path
  call show Quoted
  call show Café
  call show Count
  call show Max
  call show Blob
  call show Expand
  call show List
  ifnot regvalueexists "$k$" Old
    print "01 =- deletes a value"
  endif
  if regkeyexists "HKEY_CURRENT_USER\Software\Corvale\Empty"
    print "02 a key line alone makes the key"
  endif
  ifnot regkeyexists "HKEY_CURRENT_USER\Software\Corvale\Gone"
    print "03 [-key] deletes the key and its subkeys"
  endif
  loadreg v5.reg
  $k$ = "HKEY_LOCAL_MACHINE\Software\Corvale\ÉTÉ"
  call show Name
  call show Home
  call show Items
  call show Big
  loadreg bad.reg
  set $v$ readreg "HKEY_CURRENT_USER\Software\Corvale\Bad" Good
  print "04 the good lines of a bad file load: [$v$]"
  loadreg missing.reg
  print "05 the run goes on"
endsub

' Prints value $param[1]$ of key $k$, read back, and its type.
sub show
  set $v$ readreg "$k$" $param[1]$
  set $t$ regvaluetype "$k$" $param[1]$
  print ^$param[1]$ [$v$] $t$^
endsub
