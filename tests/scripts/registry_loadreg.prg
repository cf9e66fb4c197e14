' loadreg: a REGEDIT4 file (Windows-1252, CR LF), a version 5.00 file (UTF-16LE), a file with bad
' lines, and a missing file
sub main
  loadreg v4.reg
  $k$ = "HKEY_CURRENT_USER\Software\Corvale\Tools"
  set $v$ readreg "$k$" DEFAULT
  print "01 @ is the default value: [$v$]"
  set $v$ readreg "$k$" Path
  print "02 a doubled backslash is one: [$v$]"
  set $v$ readreg "$k$" Quoted
  print ^03 an escaped quote: [$v$]^
  set $v$ readreg "$k$" Café
  print "04 Windows-1252 text: [$v$]"
  set $v$ readreg "$k$" Count
  set $t$ regvaluetype "$k$" Count
  print "05 dword:0000000a: [$v$] $t$"
  set $v$ readreg "$k$" Max
  print "06 dword:ffffffff: [$v$]"
  set $v$ readreg "$k$" Blob
  set $t$ regvaluetype "$k$" Blob
  print "07 hex: with a continuation line: [$v$] $t$"
  set $v$ readreg "$k$" Expand
  set $t$ regvaluetype "$k$" Expand
  print "08 hex(2): [$v$] $t$"
  set $v$ readreg "$k$" List
  set $t$ regvaluetype "$k$" List
  print "09 hex(7): [$v$] $t$"
  ifnot regvalueexists "$k$" Old
    print "10 =- deletes a value"
  endif
  if regkeyexists "HKEY_CURRENT_USER\Software\Corvale\Empty"
    print "11 a key line alone makes the key"
  endif
  ifnot regkeyexists "HKEY_CURRENT_USER\Software\Corvale\Gone"
    print "12 [-key] deletes the key and its subkeys"
  endif
  loadreg v5.reg
  $k$ = "HKEY_LOCAL_MACHINE\Software\Corvale\ÉTÉ"
  set $v$ readreg "$k$" Name
  print "13 UTF-16 text: [$v$]"
  set $v$ readreg "$k$" Home
  print "14 hex(2) in UTF-16: [$v$]"
  set $v$ readreg "$k$" Items
  print "15 hex(7) in UTF-16: [$v$]"
  set $v$ readreg "$k$" Big
  set $t$ regvaluetype "$k$" Big
  print "16 hex(b): [$v$] $t$"
  loadreg bad.reg
  set $v$ readreg "HKEY_CURRENT_USER\Software\Corvale\Bad" Good
  print "17 the good lines of a bad file load: [$v$]"
  loadreg missing.reg
  print "18 the run goes on"
endsub
