' Enumeration: one name per call, the position kept in $enumregkeys$ / $enumregvalues$, names in
' case-blind alphabetical order, "" and position 0 after the last name
sub main
  $k$ = "HKEY_CURRENT_USER\Software\Corvale\List"
  writereg "$k$\beta" v 1
  writereg "$k$\Alpha" v 1
  writereg "$k$\gamma" v 1
  writereg "$k$\Delta" v 1
  writereg "$k$" zeta 1
  writereg "$k$" Eta 1
  writereg "$k$" DEFAULT 1
  print "== keys"
  set $name$ enumregkeys "$k$"
  while "$name$" <> ""
    print "[$name$] next $enumregkeys$"
    set $name$ enumregkeys "$k$"
  endwhile
  print "after the last: [$name$] position $enumregkeys$"
  print "== values (the default value is DEFAULT)"
  set $name$ enumregvalues "$k$"
  while "$name$" <> ""
    set $v$ readreg "$k$" "$name$"
    print "[$name$]=$v$ next $enumregvalues$"
    set $name$ enumregvalues "$k$"
  endwhile
  print "after the last: [$name$] position $enumregvalues$"
  print "== the position is a plain variable"
  $enumregkeys$ = 2
  set $name$ enumregkeys "$k$"
  print "from position 2: [$name$] next $enumregkeys$"
  $enumregkeys$ = 99
  set $name$ enumregkeys "$k$"
  print "past the end: [$name$] position $enumregkeys$"
  print "== a key without subkeys"
  set $name$ enumregkeys "$k$\Alpha"
  print "no subkeys: [$name$] position $enumregkeys$"
  print "== a missing key"
  $enumregvalues$ = 3
  set $name$ enumregvalues "HKEY_CURRENT_USER\Software\Nowhere"
  print "missing: [$name$] position $enumregvalues$"
  set $name$ enumregkeys "HKEY_CURRENT_USER\Software\Nowhere"
  print "missing: [$name$] position $enumregkeys$"
endsub
