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
  ' --- values that go through a variable
  :chains
  set $c$ chr 129
  set $r$ asc "$c$"
  print ^asc of chr 129 = [$r$]^
  set $c$ chr 200
  set $r$ asc "$c$"
  print ^asc of chr 200 = [$r$]^
  set $c$ chr 0
  set $r$ len "$c$"
  print ^len of chr 0 = [$r$]^
  set $r$ encode "Hello, World!" 3
  print ^encode Hello World 3 = [$r$]^
  set $r$ decode "$r$" 3
  print ^decode it = [$r$]^
  set $r$ encode "Grüße" 1
  print ^encode Grüße = [$r$]^
  set $n$ len "$r$"
  print ^its length = [$n$]^
  set $r$ decode "$r$" 1
  print ^decode it = [$r$]^
endsub
