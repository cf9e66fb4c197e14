' File and directory tests in conditions (fixtures in conditions_files.files). Each line of
' conditions.lst ("'" starts a comment) runs as "if LINE" and is printed with its outcome.
sub main
  set $f$ fileopen "conditions.lst"
  :next
  set $line$ fileread $f$
  set $at$ find ^$line$^ "(eof)"
  if $at$ = 1
    end
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
endsub
