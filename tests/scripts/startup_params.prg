' Start-up variables: the script name, the parameters, $apppath$ and $ver$
sub main
  print "param[0]=[$param[0]$]"
  print "count=[$param_count$]"
  print "1=[$param[1]$] 2=[$param[2]$] 3=[$param[3]$]"
  print "4=[$param[4]$] 5=[$param[5]$] 6=[$param[6]$] 7=[$param[7]$]"
  print "apppath=[$apppath$]"
  print "ver=[$ver$]"
endsub
