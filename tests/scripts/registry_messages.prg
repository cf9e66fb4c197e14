' Registry failures: each is a warning with its operation's tag, and the run goes on
sub main
  print "01 remote, local-only roots"
  writereg "\\server\HKEY_CURRENT_USER\Software\X" v 1
  set $v$ readreg "\\server\HKEY_CLASSES_ROOT\X" v
  print "02 remote, machine roots"
  writereg "\\server\HKEY_LOCAL_MACHINE\Software\X" v 1
  set $v$ readreg "\\server\HKEY_USERS\X" v
  if regkeyexists "\\server\HKEY_LOCAL_MACHINE\Software\X"
    print "FAIL a remote key exists"
  endif
  ifnot regkeyexists "HKEY_LOCAL_MACHINE\Software\X"
    print "03 nothing was written here instead"
  endif
  print "04 bad paths"
  writereg "Software\NoRoot" v 1
  writereg "HKEY_NOWHERE\Software\X" v 1
  writereg "HKEY_CURRENT_USER\Software\@300@" v 1
  writereg "HKEY_CURRENT_USER\Software\a\\b" v 1
  writereg "" v 1
  print "05 deleting what isn't there"
  delregkey "HKEY_CURRENT_USER\Software\Nowhere"
  delregkey "HKEY_CURRENT_USER"
  delregvalue "HKEY_CURRENT_USER\Software\Nowhere" v
  writereg "HKEY_CURRENT_USER\Software\Here" v 1
  delregvalue "HKEY_CURRENT_USER\Software\Here" w
  delregkey ""
  print "06 the run goes on"
endsub
