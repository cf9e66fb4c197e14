' Windows-1252 bytes in a script are read as those characters and written out as UTF-8
sub main
  print "1 café naïve Ärger"
  print "2 € “quoted” …"
  set $Été$ "summer"
  print "3 $éTÉ$"
  print "4 ß ÿ ©"
endsub
