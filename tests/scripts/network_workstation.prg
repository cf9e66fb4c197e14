' Workstation facts agree with the environment names of the error log; a group that doesn't
' exist is not the user's; a key text that can't be read is a warning.
sub main
  set $host$ getnethostname
  set $computer$ getnetcomputername
  set $user$ getnetusername
  set $domain$ getnetuserdomain
  set $ip$ getnetipaddress
  if $host$ = %COMPUTERNAME%
    print "host name matches COMPUTERNAME"
  endif
  if $computer$ = %COMPUTERNAME%
    print "computer name matches COMPUTERNAME"
  endif
  if not $user$ = ""
    print "user name is known"
  endif
  if not $domain$ = ""
    print "user domain is known"
  endif
  set $ipok$ "no"
  if $ip$ = ""
    set $ipok$ "yes"
  endif
  set $dots$ find "$ip$" "." 3
  if $dots$ > 0
    set $ipok$ "yes"
  endif
  print "address is empty or dotted: $ipok$"
  if isingroup "no such group 7f3a9c"
    print "FAIL a made-up group"
  else
    print "a made-up group is not the user's"
  endif
  set $c$ connectedto "Q:\no\such\folder"
  print "connectedto=[$c$]"
  sendkeys "ab{NOPE}"
  print "end"
endsub
