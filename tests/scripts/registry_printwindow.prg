' printwindow stores the output window's placement under ...\Quiller\DisplayForm, value by value,
' before placing the window
sub main
  printwindow 100 200 3000 4000
  $k$ = "HKEY_CURRENT_USER\Software\Quiller\DisplayForm"
  set $l$ readreg "$k$" Left
  set $t$ readreg "$k$" Top
  set $w$ readreg "$k$" Width
  set $h$ readreg "$k$" Height
  set $type$ regvaluetype "$k$" Top
  print "01 left $l$ top $t$ width $w$ height $h$ ($type$)"
  printwindow 1 2 wide 4
  set $l$ readreg "$k$" Left
  set $t$ readreg "$k$" Top
  set $w$ readreg "$k$" Width
  set $h$ readreg "$k$" Height
  print "02 written before the bad width: left $l$ top $t$ height $h$, width still $w$"
endsub
