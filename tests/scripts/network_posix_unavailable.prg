' No domain controllers, drive or printer connections, or keystrokes on POSIX: each is a
' warning, functions give the empty text, and the script goes on. Mount points answer
' connectedto and connectedhow.
sub main
  set $dc$ getnetdc CORVALE
  print "getnetdc=[$dc$]"
  set $r$ netuse X: \\files\public
  print "netuse=[$r$]"
  set $r$ netuse LPT1 \\files\laser "" "" {printer persistent}
  print "netuse printer=[$r$]"
  set $r$ netusedel X: force
  print "netusedel=[$r$]"
  addprinter \\files\laser
  sendkeys "abc{ENTER}"
  set $source$ connectedto /
  set $type$ connectedhow /
  if not $source$ = ""
    print "/ is mounted"
  endif
  if not $type$ = ""
    print "/ has a file-system type"
  endif
  set $none$ connectedto /no/such/dir
  print "not mounted=[$none$]"
endsub
