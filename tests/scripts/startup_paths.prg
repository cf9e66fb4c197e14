' A script in a subdirectory with a blank in its name, started without its extension and with
' more than ten parameters
sub main
  print "param[0]=[$param[0]$]"
  print "apppath=[$apppath$]"
  print "count=[$param_count$]"
  print "1=[$param[1]$] 2=[$param[2]$] 9=[$param[9]$] 10=[$param[10]$] 11=[$param[11]$]"
endsub
