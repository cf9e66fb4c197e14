' Index notation nested 100,000 deep: resolved from the innermost index out
sub main
  set $a[1]$ 1
  print "deep=[$a[@OPEN@1@CLOSE@]$]"
  set $a[@OPEN@1@CLOSE@]$ "two"
  print "a[1]=[$a[1]$]"
  set $b[x]$ "bx"
  set $x$ "x"
  print "mixed=[$b[x@CLOSE@$]"
endsub
