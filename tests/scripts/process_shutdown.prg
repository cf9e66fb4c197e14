' shutdown, as a dry run: QUILLER_SHUTDOWN_LOG makes it write the action it would take to that
' file instead of taking it, and PATH finds no program at all
sub main
  shutdown 0
  shutdown 1
  shutdown 2
  shutdown 3
  shutdown 4
  shutdown 5
  ' above 5 and not numeric count as 0; a negative mode does nothing
  shutdown 7
  shutdown abc
  shutdown -1
  shutdown
  shutdown 2.5 {quiet}
  print "the script goes on"
  call show shutdown.log
endsub

sub show
  set $h$ fileopen "$param[1]$"
  set $l$ fileread $h$
  while "$l$" <> "(eof)"
    print "[$l$]"
    set $l$ fileread $h$
  endwhile
  fileclose $h$
endsub
