' The search for endwhile stops below the line count: an endwhile on the very last line is not
' found when the loop ends (this main has no endsub)
sub main
  set $i$ 0
  while $i$ < 2
    set $i$ $i$ + 1
    print "pass $i$"
  endwhile
