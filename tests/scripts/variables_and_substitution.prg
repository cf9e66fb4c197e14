' Variables, index notation and the substitution of $ and % references
sub main
  print "01 5$$"
  print "02 ends with $$"
  set $x$ "seven"
  print "03 $$$x$"
  set $a$ "A"
  set $b$ "B"
  print "04 $a$$b$"
  set $ref$ "$$b$$"
  print "05 $ref$"
  set $dollar$ "$$"
  print "06 $dollar$$dollar$"
  set $MiXeD$ "Value Keeps Its Case"
  print "07 $MIXED$ / $mixed$"
  print "08 [$never_set$]"
  set $emptied$ "something"
  set $emptied$ ""
  print "09 [$emptied$]"
  set $i$ 3
  set $list[i]$ "three"
  print "10 $list[3]$ $list[i]$ $LIST[I]$"
  set $list[03]$ "zero three"
  print "11 [$list[03]$] [$list[3]$]"
  set $list[nothing_here]$ "empty index"
  print "12 [$list[]$]"
  set $idx[1]$ 3
  print "13 [$list[idx[1]]$]"
  call setter
  print "14 $from_sub$"
  set $n$ 1
  while $n$ <= 60
    set $v[n]$ $n$ * 10
    set $n$ $n$ + 1
  endwhile
  print "15 $v[1]$ $v[50]$ $v[51]$ $v[60]$ [$v[61]$]"
  set "quoted name" "q"
  set 'single' "s"
  set ^caret^ "c"
  set bare "b"
  print "16 $quoted name$ $single$ $caret$ $bare$"
  print "17 [%QTEST_GREETING%]"
  print "18 [%QTEST_SURELY_UNSET_VARIABLE%]"
  print "19 100%%"
  set $word$ "inner"
  print "20 %QTEST_DOLLAR%"
  set $pct$ "%%QTEST_GREETING%%"
  print "21 $pct$"
  %qtest_keyword% "22 keyword from the environment"
  print "23 naïve café ✓ Ünïcödé"
  set $CAFÉ$ "accented name"
  print "24 $café$"
  set $p$ "a%%b"
  print "25 $p$"
  print "26 [$ x $]"
  set $m[i][i]$ "first pair only"
  print "27 [$m[3][i]$] [$m[3][3]$]"
endsub

sub setter
  set $from_sub$ "set in a sub, seen everywhere"
endsub
