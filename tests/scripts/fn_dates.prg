' Date and number functions: filedate on a file with a known time, date and time with parts
' that never change, random within its bounds (values are counted, never printed)
sub main
  set $f$ filedate stamp.txt
  print "01 filedate, General Date by default = [$f$]"
  set $f$ filedate stamp.txt "yyyy-mm-dd hh:nn:ss"
  print "02 filedate with a picture = [$f$]"
  set $f$ filedate stamp.txt "Long Date"
  print "03 filedate, Long Date = [$f$]"
  set $f$ filedate stamp.txt "medium date"
  print "04 filedate, names ignore case = [$f$]"
  set $f$ filedate stamp.txt "mm:ss"
  print "05 filedate, mm before seconds is minutes = [$f$]"
  set $f$ filedate stamp.txt "dddd d mmmm yyyy, h:mm AM/PM"
  print "06 filedate, names and a 12-hour clock = [$f$]"
  set $f$ filedate stamp.txt "0.00"
  print "07 filedate with a number picture gives the day number = [$f$]"
  set $g$ filedate missing.txt
  print "08 filedate of a missing file sets nothing = [$g$]"

  set $t$ time "yyyy-mm-dd"
  print "09 time has no date part = [$t$]"
  set $d$ date "hh:nn:ss"
  print "10 date has no time part = [$d$]"
  set $a$ date
  set $b$ date "Short Date"
  if $a$ = $b$
    print "11 date without a format is the short date: true"
  else
    print "11 date without a format is the short date: false [$a$] [$b$]"
  endif
  set $b$ date "General Date"
  if $a$ = $b$
    print "12 date General Date shows no time: true"
  else
    print "12 date General Date shows no time: false [$a$] [$b$]"
  endif
  set $iso$ date yyyy-mm-dd
  if $iso$ = $b$
    print "13 date yyyy-mm-dd is today as well: true"
  else
    print "13 date yyyy-mm-dd is today as well: false [$iso$] [$b$]"
  endif
  set $y$ date yyyy
  if $y$ >= 2000
    print "14 the year has four digits: true"
  else
    print "14 the year has four digits: false [$y$]"
  endif
  set $w$ date w
  set $ok$ 0
  if $w$ >= 1
    if $w$ <= 7
      set $ok$ 1
    endif
  endif
  print "15 date w is a weekday 1 to 7: $ok$"
  set $l$ time
  set $ok$ 0
  if "$l$" >= "12:00:00 AM"
    if "$l$" <= "11:59:59 PM"
      set $ok$ 1
    endif
  endif
  print "16 time without a format is a time of day: $ok$"
  set $hh$ time hh
  set $h$ time h
  set $two$ "h" + "$hh$"
  if $h$ < 10
    set $want$ "h0" + "$h$"
  else
    set $want$ "h" + "$h$"
  endif
  if $two$ = $want$
    print "17 time hh has two digits: true"
  else
    print "17 time hh has two digits: false [$two$] [$want$]"
  endif

  call draws 1 1 1 50
  print "18 random 1, 50 draws, each 1: $inside$ of 50"
  call draws 6 1 6 200
  print "19 random 6, 200 draws within 1 to 6: $inside$ of 200, values seen: $seen$"
  call draws 0 1 1 20
  print "20 random 0 gives 1: $inside$ of 20"
  call draws 0.5 1 1 20
  print "21 random 0.5 rounds to 0 (halves to even) and gives 1: $inside$ of 20"
  call draws 2.5 1 2 50
  print "22 random 2.5 rounds to 2: $inside$ of 50 within 1 to 2, values seen: $seen$"
  call draws -5 -4 1 100
  print "23 random -5 gives -4 to 1: $inside$ of 100"
  set $big$ random 40000
  print "24 random beyond 16 bits sets nothing = [$big$]"
  set $s$ random abc
  print "25 random of a text sets nothing = [$s$]"
endsub

' Draws random $param[1]$ $param[4]$ times: $inside$ counts the whole numbers from $param[2]$
' to $param[3]$, $seen$ how many of the values 1 to 6 came up.
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
endsub
