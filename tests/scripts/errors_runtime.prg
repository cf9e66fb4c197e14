' Failures inside a statement (division by zero, overflow, type mismatch) are warnings
sub main
  set $d$ 1 / 0
  print "after division by zero: d=[$d$]"
  set $x$ 5
  set $y$ $x$ / 0
  print "after division of a variable: y=[$y$]"
  set $o$ 1e308 * 10
  print "after overflow: o=[$o$]"
  set $t$ "abc" - "def"
  print "after subtracting texts: t=[$t$]"
  $s$ = 2 / 0
  print "end"
endsub
