' web without an opener (no xdg-open in PATH): a message box, and the script goes on
sub main
  web "https://example.org/"
  print "after the first"
  web report.xyz {quiet}
  print "after the second"
endsub
