' Registry values: writereg, readreg and regvaluetype for every type, names that ignore case,
' the default value, overwriting, deleting, and the two registry conditions
sub main
  $k$ = "HKEY_CURRENT_USER\Software\Corvale\Values"
  call put Plain "hello world"
  set $v$ readreg "$k$" plain
  set $t$ regvaluetype "$k$" PLAIN
  print "names ignore case: [$v$] $t$"
  call put Sz typed REG_SZ
  call put Expand "C:\Tools;D:\x" REG_EXPAND_SZ
  call put Multi "a|b|c" REG_MULTI_SZ
  call put Number 12abc reg_dword
  call put Minus -1 REG_DWORD
  call put Big 4294967296 REG_DWORD
  call put Text abc REG_DWORD
  call put Odd x REG_NONSENSE
  call put Bin "01 02" REG_BINARY
  call put Plain 7 REG_DWORD
  writereg "$k$" DEFAULT "the default"
  set $v$ readreg "$k$" ""
  print "01 DEFAULT is the unnamed value: [$v$]"
  if regvalueexists "$k$" default
    print "02 regvalueexists finds the default value"
  endif
  set $v$ readreg "$k$" Missing
  set $t$ regvaluetype "$k$" Missing
  print "03 a missing value is empty: [$v$] [$t$]"
  set $v$ readreg "HKEY_CURRENT_USER\Software\Nowhere" Missing
  print "04 a missing key is empty: [$v$]"
  writereg "HKEY_LOCAL_MACHINE\Software\Corvale\Ünïcødé" Größe "Ærø ✓"
  set $v$ readreg "hkey_local_machine\SOFTWARE\corvale\ÜNÏCØDÉ" GRÖßE
  print "05 Unicode names ignore case too: [$v$]"
  writereg "$k$" Empty ""
  if regvalueexists "$k$" Empty
    print "06 an empty value exists"
  endif
  if regkeyexists "$k$"
    print "07 regkeyexists"
  endif
  ifnot regkeyexists "HKEY_CURRENT_USER\Software\Nowhere"
    print "08 not regkeyexists"
  endif
  ifnot regkeyexists "Software\Corvale"
    print "09 a path without a root is no key"
  endif
  delregvalue "$k$" multi
  ifnot regvalueexists "$k$" Multi
    print "10 delregvalue"
  endif
  writereg "$k$\Child\Grandchild" v 1
  delregkey "HKEY_CURRENT_USER\Software\Corvale"
  ifnot regkeyexists "$k$\Child\Grandchild"
    print "11 delregkey takes the subkeys along"
  endif
  if regkeyexists "HKEY_CURRENT_USER\Software"
    print "12 the parent stays"
  endif
endsub

' Writes value $param[1]$ = $param[2]$ of type $param[3]$ (none given: the default), then prints
' the name, the value read back and its type.
sub put
  writereg "$k$" $param[1]$ "$param[2]$" $param[3]$
  set $v$ readreg "$k$" $param[1]$
  set $t$ regvaluetype "$k$" $param[1]$
  print "$param[1]$ [$v$] $t$"
endsub
