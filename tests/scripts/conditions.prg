' Conditions: comparisons of numbers, texts and dates, missing operands, operator symbols, test
' words, a leading "not", and the file tests (fixtures in conditions.files). Each line of
' conditions.txt ("' " starts a comment) runs as "if LINE" and is printed with its outcome;
' conditions with variables follow.
sub main
  set $f$ fileopen "conditions.txt"
  set $line$ fileread $f$
  while ^$line$^ <> "(eof)"
    set $at$ find ^$line$^ "' "
    if $at$ <> 1
      set $r$ "false"
      if $line$
        set $r$ "true"
      endif
      print ^$line$: $r$^
    endif
    set $line$ fileread $f$
  endwhile
  set $a$ "x"
  set $b$ "y"
  set $n$ 5
  if $unset_a$ = $unset_b$
    print "two missing operands are equal"
  endif
  if $unset_a$ < 5
    print "a missing first operand leaves 5 as the first operand"
  endif
  if $a$ <> $b$ = 1
    print "<> goes before ="
  endif
  if $n$ = 5
    print "substituted operand"
  endif
  if $n$ = 5.0
    print "FAIL 5.0 is a time"
  else
    print "5.0 is a time"
  endif
endsub
