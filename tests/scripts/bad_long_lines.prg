' Very long lines: 100,000 characters in one argument, 50,000 words on one line
sub main
  print "1 @LONG@"
  set $long$ "@LONG@"
  print "2 $long$$long$"
  call show@WORDS@
  frobnicate @LONG@
  print "4 end"
endsub

sub show
  print "3 count=[$param_count$] 1=[$param[1]$] 10=[$param[10]$]"
endsub
