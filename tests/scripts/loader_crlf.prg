' CR LF line ends, and no line end after the last line
sub main
  print x
  set $v$ 5
  set $w$ $v$ + 1
  print "w=$w$"

  ' a comment
  :here
  if $w$ = 6
    print last
  endif
endsub