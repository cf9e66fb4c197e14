' Text functions given arguments they can't use: each failure is a warning, the run goes on,
' and the set line assigns nothing, so $r$ keeps its value. Each line of calls.txt runs as
' "set $r$ CALL" and is printed with the value between brackets, after the platform text that
' on_error got.
sub main
  set $f$ fileopen calls.txt
  set $call$ fileread $f$
  while ^$call$^ <> "(eof)"
    set $r$ "unchanged"
    set $r$ $call$
    print ^$call$ = [$r$]^
    set $call$ fileread $f$
  endwhile
  print "end"
endsub

sub on_error
  print "  $param[4]$"
endsub
