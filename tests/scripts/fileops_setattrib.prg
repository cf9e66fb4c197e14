' setattrib: "+" sets and "-" clears the letters after it, in one argument or several;
' getattrib reads them back (R H S A C)
sub main
  errorshow off
  call flags +R
  call flags -R +h
  call flags +S-R
  call flags "+R -H -S +A"
  call flags -RH
  call flags +R -R
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

' Sets the flags given on f.txt (the first as one argument, quoted) and prints them with what
' getattrib reads back.
sub flags
  setattrib f.txt "$param[1]$" $param[2]$
  set $a$ getattrib f.txt
  print "$param[1]$ $param[2]$: [$a$]"
endsub

sub on_error
  print "  warning: $param[0]$"
  if "$param[4]$" <> ""
    print "  (with the system's text)"
  endif
endsub
