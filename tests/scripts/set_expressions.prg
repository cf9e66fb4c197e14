' Values of set lines: literals, one operator between two operands, dates minus dates. Each line
' of calls.txt ("'" starts a comment) runs as "set $r$ LINE" and is printed with the value
' between brackets.
sub main
  set $f$ fileopen "calls.txt"
  :next
  set $line$ fileread $f$
  set $at$ find ^$line$^ "(eof)"
  if $at$ = 1
    end
  endif
  set $at$ find ^$line$^ "'"
  if $at$ <> 1
    set $r$ $line$
    print ^$line$ = [$r$]^
  endif
  goto next
endsub
