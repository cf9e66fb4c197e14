' With standard input not a terminal, debug on changes nothing: every line runs.
sub main
   debug on
   print one
   print two
endsub
