' A "$" or "%" without its partner: a message box, and the text being substituted becomes empty
sub main
  print "1 before"
  print "2 costs $5"
  print "3 after"
  set $v$ "ok"
  print "4 50% of $v$"
  print "5 50%% of $v$"
  print "6 $v$ then $"
  print "7 end"
endsub
