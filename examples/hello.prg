' hello.prg - a first Quiller script.
'
' Run it with a name:   quillerc examples/hello.prg Ann
' or without one:       quillerc examples/hello.prg

sub main
   ' $param[1]$ is the first word after the script's name. Keep it in a variable of our
   ' own: every "call" below sets $param[1]$ anew.
   $name$ = "$param[1]$"
   if $param_count$ = 0
      $name$ = "world"
   endif
   print "Hello, $name$!" "Hello"

   ' A loop that calls a subroutine three times.
   $n$ = 1
   while $n$ <= 3
      call square $n$
      set $n$ $n$ + 1
   endwhile

   print "Goodbye, $name$."
endsub

' Prints a number and its square; $param[1]$ is the number.
sub square
   set $result$ $param[1]$ * $param[1]$
   if $result$ > 5
      print "$param[1]$ x $param[1]$ = $result$, that's more than 5"
   else
      print "$param[1]$ x $param[1]$ = $result$"
   endif
endsub
