' Comparisons in conditions: numbers, texts, dates, missing operands, operator symbols and test
' words. Each line of conditions.txt ("'" starts a comment) runs as "if LINE" and is printed with
' its outcome; conditions with variables follow.
sub main
  set $f$ fileopen "conditions.txt"
  :next
  set $line$ fileread $f$
  set $at$ find ^$line$^ "(eof)"
  if $at$ = 1
    goto variables
  endif
  set $at$ find ^$line$^ "'"
  if $at$ = 1
    goto next
  endif
  if $line$
    print ^$line$: true^
  else
    print ^$line$: false^
  endif
  goto next
  :variables
  set $a$ "x"
  set $b$ "y"
  set $n$ 5
  if $unset_a$ = $unset_b$
    print "two missing operands are equal: true"
  else
    print "two missing operands are equal: false"
  endif
  if $unset_a$ < 5
    print "a missing first operand leaves 5 as the first operand: true"
  else
    print "a missing first operand leaves 5 as the first operand: false"
  endif
  if $a$ <> $b$ = 1
    print "<> goes before =: true"
  else
    print "<> goes before =: false"
  endif
  if $n$ = 5
    print "substituted operand: true"
  else
    print "substituted operand: false"
  endif
  if $n$ = 5.0
    print "5.0 is a time: true"
  else
    print "5.0 is a time: false"
  endif
endsub
