' Registry values: writereg, readreg and regvaluetype for every type, names that ignore case,
' the default value, overwriting, deleting, and the two registry conditions
sub main
  $k$ = "HKEY_CURRENT_USER\Software\Corvale\Values"
  writereg "$k$" Plain "hello world"
  set $v$ readreg "$k$" plain
  set $t$ regvaluetype "$k$" PLAIN
  print "01 REG_SZ by default, names ignore case: [$v$] $t$"
  writereg "$k$" Sz "typed" REG_SZ
  set $t$ regvaluetype "$k$" Sz
  print "02 REG_SZ named: $t$"
  writereg "$k$" Expand "C:\Tools;D:\x" REG_EXPAND_SZ
  set $v$ readreg "$k$" Expand
  set $t$ regvaluetype "$k$" Expand
  print "03 REG_EXPAND_SZ: [$v$] $t$"
  writereg "$k$" Multi "a|b|c" REG_MULTI_SZ
  set $v$ readreg "$k$" Multi
  set $t$ regvaluetype "$k$" Multi
  print "04 REG_MULTI_SZ items joined by |: [$v$] $t$"
  writereg "$k$" Number 12abc reg_dword
  set $v$ readreg "$k$" Number
  set $t$ regvaluetype "$k$" Number
  print "05 REG_DWORD from the leading number, any case: [$v$] $t$"
  writereg "$k$" Minus -1 REG_DWORD
  set $v$ readreg "$k$" Minus
  print "06 -1 as a DWORD: [$v$]"
  writereg "$k$" Big 4294967296 REG_DWORD
  set $v$ readreg "$k$" Big
  print "07 2^32 wraps: [$v$]"
  writereg "$k$" Text abc REG_DWORD
  set $v$ readreg "$k$" Text
  print "08 no number is 0: [$v$]"
  writereg "$k$" Odd "x" REG_NONSENSE
  set $t$ regvaluetype "$k$" Odd
  print "09 an unknown type writes REG_SZ: $t$"
  writereg "$k$" Bin "01 02" REG_BINARY
  set $t$ regvaluetype "$k$" Bin
  print "10 writereg writes REG_BINARY as text: $t$"
  writereg "$k$" Plain 7 REG_DWORD
  set $t$ regvaluetype "$k$" Plain
  print "11 overwriting changes the type: $t$"
  writereg "$k$" DEFAULT "the default"
  set $v$ readreg "$k$" ""
  print "12 DEFAULT is the unnamed value: [$v$]"
  if regvalueexists "$k$" default
    print "13 regvalueexists finds the default value"
  endif
  set $v$ readreg "$k$" Missing
  set $t$ regvaluetype "$k$" Missing
  print "14 a missing value is empty: [$v$] [$t$]"
  set $v$ readreg "HKEY_CURRENT_USER\Software\Nowhere" Missing
  print "15 a missing key is empty: [$v$]"
  writereg "HKEY_LOCAL_MACHINE\Software\Corvale\Ünïcødé" Größe "Ærø ✓"
  set $v$ readreg "hkey_local_machine\SOFTWARE\corvale\ÜNÏCØDÉ" GRÖßE
  print "16 Unicode names ignore case too: [$v$]"
  writereg "$k$" Empty ""
  if regvalueexists "$k$" Empty
    print "17 an empty value exists"
  endif
  if regkeyexists "$k$"
    print "18 regkeyexists"
  endif
  ifnot regkeyexists "HKEY_CURRENT_USER\Software\Nowhere"
    print "19 not regkeyexists"
  endif
  ifnot regkeyexists "Software\Corvale"
    print "20 a path without a root is no key"
  endif
  delregvalue "$k$" multi
  ifnot regvalueexists "$k$" Multi
    print "21 delregvalue"
  endif
  writereg "$k$\Child\Grandchild" v 1
  delregkey "HKEY_CURRENT_USER\Software\Corvale"
  ifnot regkeyexists "$k$\Child\Grandchild"
    print "22 delregkey takes the subkeys along"
  endif
  if regkeyexists "HKEY_CURRENT_USER\Software"
    print "23 the parent stays"
  endif
endsub
