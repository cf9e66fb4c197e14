' Values of set lines: literals, one operator between two operands, dates minus dates. Each line
' of calls.txt ("' " starts a comment) runs as "set $r$ LINE" and is printed with the value
' between brackets.
sub main
  set $f$ fileopen "calls.txt"
  set $line$ fileread $f$
  while ^$line$^ <> "(eof)"
    set $at$ find ^$line$^ "' "
    if $at$ <> 1
      set $r$ $line$
      print ^$line$ = [$r$]^
    endif
    set $line$ fileread $f$
  endwhile
endsub
