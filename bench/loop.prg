' The benchmark loop: 1,000,000 passes of while, set and endwhile.
' bench/run.sh replaces the count when it is given another one.
sub main
   $i$ = 0
   while $i$ < 1000000
      set $i$ $i$ + 1
   endwhile
   print $i$
endsub
