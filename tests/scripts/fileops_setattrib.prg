' setattrib: "+" sets and "-" clears the letters after it, in one argument or several;
' getattrib reads them back (R H S A C)
sub main
  errorshow off
  setattrib f.txt +R
  set $a$ getattrib f.txt
  print "+R: $a$"
  setattrib f.txt -R +h
  set $a$ getattrib f.txt
  print "-R +h: $a$"
  setattrib f.txt +S-R
  set $a$ getattrib f.txt
  print "+S-R: $a$"
  setattrib f.txt "+R -H -S +A"
  set $a$ getattrib f.txt
  print "quoted +R -H -S +A: $a$"
  setattrib f.txt -RH
  set $a$ getattrib f.txt
  print "-RH: [$a$]"
  setattrib f.txt +R -R
  set $a$ getattrib f.txt
  print "+R -R (the last wins): [$a$]"
  setattrib *.LOG +H
  set $a$ getattrib a.log
  set $b$ getattrib b.log
  print "*.LOG +H: $a$ $b$"
  print "-- refusals"
  setattrib f.txt
  setattrib f.txt R
  setattrib f.txt +X
  setattrib f.txt +R -
  setattrib missing.txt +R
  setattrib *.zip +R
  setattrib
  set $a$ getattrib f.txt
  print "f.txt unchanged: [$a$]"
endsub

sub on_error
  print "  warning: $param[0]$"
  if "$param[4]$" <> ""
    print "  (with the system's text)"
  endif
endsub
