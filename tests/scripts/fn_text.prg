' The text functions of set: codes, lengths, parts, case, searching, pieces, replacing, shifting.
' Positions and lengths count characters, not bytes. Each line of calls.txt is one call ("'"
' starts a comment): it runs as "set $r$ CALL" and is printed with the value between brackets.
sub main
  set $f$ fileopen "calls.txt"
  :next
  set $call$ fileread $f$
  set $at$ find ^$call$^ "(eof)"
  if $at$ = 1
    goto chains
  endif
  set $at$ find ^$call$^ "'"
  if $at$ <> 1
    set $r$ $call$
    print ^$call$ = [$r$]^
  endif
  goto next
  ' --- chr 0, whose NUL a line of calls.txt would print
  :chains
  set $c$ chr 0
  set $r$ len "$c$"
  print ^len of chr 0 = [$r$]^
endsub
