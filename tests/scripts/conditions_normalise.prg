' How if, while and until conditions are rewritten: a leading "not", and operator symbols
sub main
  if not 5 = 6
    print "01 if not 5 = 6 runs the body"
  endif
  if NOT 5 = 5
    print "FAIL 02"
  else
    print "02 if NOT 5 = 5 takes the else-part"
  endif
  if notequal abc abd
    print "03 notequal abc abd is true"
  endif
  if notequal abc ABC
    print "FAIL 04"
  else
    print "04 notequal abc ABC is false"
  endif
  if nothing = something
    print "05 a condition that begins with the letters n o t is negated"
  endif
  ifnot equal a b
    print "06 ifnot written by hand, with a test word"
  endif
  ifnot 5 = 5
    print "07 ifnot written by hand keeps its = sign: unknown test, false, inverted"
  endif
  if foo a b
    print "FAIL 08"
  else
    print "08 an unknown test is false"
  endif
  set $i$ 0
  repeat
    set $i$ $i$ + 1
    print "09 repeat pass $i$"
  until not $i$ = 3
  print "10 until not is no statement: the loop ran once"
  set $w$ 0
  while not $w$ = 3
    set $w$ $w$ + 1
    print "11 while not is no statement: the body runs, pass $w$"
    goto after_while
  endwhile
:after_while
  print "12 end"
endsub
