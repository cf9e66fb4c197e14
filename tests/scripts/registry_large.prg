' A value of 1 MB goes in and comes back whole
sub main
  writereg "HKEY_CURRENT_USER\Software\Big" Value "@MB@"
  set $v$ readreg "HKEY_CURRENT_USER\Software\Big" Value
  set $n$ len "$v$"
  print "length $n$"
  if "$v$" = "@MB@"
    print "same text"
  endif
endsub
