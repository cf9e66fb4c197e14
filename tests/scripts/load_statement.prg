' load: a second script file is added to the program at run time and gets new parameters
sub main
  if $stage$ = ""
    set $stage$ "loading"
    print "before load: param[0]=[$param[0]$] count=[$param_count$]"
    load second.prg alpha "beta gamma"
    print "after load: param[0]=[$param[0]$] count=[$param_count$]"
    print "after load: 1=[$param[1]$] 2=[$param[2]$] 3=[$param[3]$]"
    call second_helper
    print "back in main"
  endif
endsub
