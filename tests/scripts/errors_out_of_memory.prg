' Memory running out ends the run with a fatal error and its log record
sub main
  print "start"
  set $s$ "0123456789abcdef"
  repeat
    set $s$ "$s$$s$"
  until $s$ = ""
endsub
