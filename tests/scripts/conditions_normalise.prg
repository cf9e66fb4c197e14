' How if, while and until conditions are rewritten: ifnot written by hand with an operator sign,
' and a leading "not" on until and while (a leading "not" on if is in conditions.prg, ifnot with a
' test word in control_flow.prg)
sub main
  ifnot 5 = 5
    print "01 ifnot written by hand keeps its = sign: unknown test, false, inverted"
  endif
  set $i$ 0
  repeat
    set $i$ $i$ + 1
    print "02 repeat pass $i$"
  until not $i$ = 3
  print "03 until not is no statement: the loop ran once"
  set $w$ 0
  while not $w$ = 3
    set $w$ $w$ + 1
    print "04 while not is no statement: the body runs, pass $w$"
    goto after_while
  endwhile
:after_while
  print "05 end"
endsub
