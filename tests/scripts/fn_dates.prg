' Date and number functions: filedate on a file with a known time, date and time with parts
' that never change, random within its bounds (values are counted, never printed). Each line of
' calls.txt ("' " starts a comment) runs as "set $r$ CALL" and is printed with the value between
' brackets, "-" when the call set nothing.
sub main
  set $f$ fileopen calls.txt
  set $call$ fileread $f$
  while ^$call$^ <> "(eof)"
    set $at$ find ^$call$^ "' "
    if $at$ <> 1
      set $r$ "-"
      set $r$ $call$
      print ^$call$ = [$r$]^
    endif
    set $call$ fileread $f$
  endwhile
  set $a$ date
  set $b$ date "Short Date"
  if $a$ = $b$
    print "01 date without a format is the short date"
  endif
  set $b$ date "General Date"
  if $a$ = $b$
    print "02 date General Date shows no time"
  endif
  set $iso$ date yyyy-mm-dd
  if $iso$ = $b$
    print "03 date yyyy-mm-dd is today as well"
  endif
  set $y$ date yyyy
  if $y$ >= 2000
    print "04 the year has four digits"
  endif
  set $w$ date w
  if $w$ >= 1
    if $w$ <= 7
      print "05 date w is a weekday 1 to 7"
    endif
  endif
  set $l$ time
  if "$l$" >= "12:00:00 AM"
    if "$l$" <= "11:59:59 PM"
      print "06 time without a format is a time of day"
    endif
  endif
  set $hh$ time hh
  set $h$ time h
  set $two$ "h" + "$hh$"
  set $want$ "h" + "$h$"
  if $h$ < 10
    set $want$ "h0" + "$h$"
  endif
  if $two$ = $want$
    print "07 time hh has two digits"
  endif
  call draws 1 1 1 50
  call draws 6 1 6 200
  call draws 0 1 1 20
  call draws 0.5 1 1 20
  call draws 2.5 1 2 50
  call draws -5 -4 1 100
endsub

' Draws random $param[1]$ $param[4]$ times and prints how many were whole numbers from $param[2]$
' to $param[3]$ and how many of the values 1 to 6 came up.
sub draws
  set $inside$ 0
  set $v$ 1
  while $v$ <= 6
    set $came[v]$ 0
    set $v$ $v$ + 1
  endwhile
  set $i$ 0
  while $i$ < $param[4]$
    set $r$ random $param[1]$
    set $v$ $param[2]$
    while $v$ <= $param[3]$
      if $r$ = $v$
        set $inside$ $inside$ + 1
      endif
      set $v$ $v$ + 1
    endwhile
    set $came[r]$ 1
    set $i$ $i$ + 1
  endwhile
  set $seen$ 0
  set $v$ 1
  while $v$ <= 6
    set $seen$ $seen$ + $came[v]$
    set $v$ $v$ + 1
  endwhile
  print "random $param[1]$, $param[4]$ draws: $inside$ from $param[2]$ to $param[3]$, values seen: $seen$"
endsub
