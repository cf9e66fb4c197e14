' A set value whose first word is neither quoted nor a number names a function; an unknown
' one is a warning and the variable becomes empty
sub main
  set $x$ "old"
  $x$ = a=b
  set $y$ hello big world out there
  set $z$ 12/25/2001 - 12/1/2001
  print "x=[$x$] y=[$y$] z=[$z$]"
endsub
