' Block statements: if/else/endif, ifnot, while, repeat/until, goto, call/endsub and end
sub main
  print "== if"
  if 1 = 1
    print "01 true condition: then-part"
  else
    print "FAIL 01"
  endif
  if 1 = 2
    print "FAIL 02"
  else
    print "02 false condition: else-part"
  endif
  if 1 = 2
    print "FAIL 03"
  endif
  print "03 false condition without else: after endif"
  if 1 = 2
    if 1 = 1
      print "FAIL 04 inner then"
    else
      print "FAIL 04 inner else"
    endif
    print "FAIL 04 outer then"
  else
    print "04 the inner if/else/endif is skipped as a whole"
  endif
  if 1 = 1
    if 1 = 2
      print "FAIL 05"
    else
      print "05 inner else"
    endif
    print "05 back in the outer then-part"
  endif
  if 1 = 2
    ifnot equal 1 2
      print "FAIL 06"
    else
      print "FAIL 06"
    endif
  else
    print "06 an inner ifnot counts as a block too"
  endif
  ifnot equal 1 2
    print "07 ifnot with a false test runs its body"
  endif
  ifnot equal 1 1
    print "FAIL 08"
  else
    print "08 ifnot with a true test takes the else-part"
  endif
  if 1 = 1
    print "09 two elses, true: first part"
  else
    print "FAIL 09 middle part"
  else
    print "09 two elses, true: last part"
  endif
  if 1 = 2
    print "FAIL 10 first part"
  else
    print "10 two elses, false: middle part"
  else
    print "FAIL 10 last part"
  endif
  print "== while"
  set $i$ 0
  while $i$ < 3
    set $i$ $i$ + 1
    print "11 while pass $i$"
  endwhile
  print "12 after while i=$i$"
  while 1 = 2
    print "FAIL 13"
  endwhile
  print "13 a false while skips its body"
  while 1 = 2
    while 1 = 1
      print "FAIL 14"
    endwhile
    print "FAIL 14"
  endwhile
  print "14 a skipped while skips the inner while too"
  set $i$ 0
  while $i$ < 2
    set $i$ $i$ + 1
    set $j$ 0
    while $j$ < 2
      set $j$ $j$ + 1
      print "15 nested while $i$.$j$"
    endwhile
  endwhile
  print "== repeat"
  set $k$ 0
  repeat
    set $k$ $k$ + 1
    print "16 repeat pass $k$"
  until $k$ >= 3
  print "17 after repeat k=$k$"
  repeat
    print "18 the body of repeat runs once even when until is true at once"
  until 1 = 1
  set $o$ 0
  repeat
    set $o$ $o$ + 1
    set $p$ 0
    repeat
      set $p$ $p$ + 1
    until $p$ = 2
    print "19 nested repeat $o$.$p$"
  until $o$ = 2
  print "== goto"
  goto forward
  print "FAIL 20"
:forward
  print "20 goto forward"
  set $g$ 0
  label again
  set $g$ $g$ + 1
  if $g$ < 3
    goto :again
  endif
  print "21 a goto loop ran $g$ times"
  goto TARGET
  print "FAIL 22"
:Target
  print "22 goto ignores the case of labels"
  set $w$ 0
  while 1 = 1
    set $w$ $w$ + 1
    if $w$ = 2
      goto out_of_loop
    endif
  endwhile
:out_of_loop
  print "23 left an endless while by goto at w=$w$"
  print "== call"
  call greet "first parameter"
  print "25 back in main; parameters are global: [$param[1]$]"
  call outer
  set $depth$ 0
  call countdown
  print "29 recursion reached depth $depth$"
  call Finisher
  print "FAIL 31 end did not end the run"
endsub

sub greet
  print "24 greet got [$param[1]$], count $param_count$"
endsub

sub outer
  print "26 outer before"
  call inner
  print "28 outer after"
endsub

sub inner
  print "27 inner"
endsub

sub countdown
  set $depth$ $depth$ + 1
  if $depth$ < 5
    call countdown
  endif
endsub

sub finisher
  print "30 end in a subroutine ends the run"
  end
  print "FAIL 31 after end"
endsub
