' Failures of the file functions and statements are warnings; the run goes on
sub main
  set $x$ fileread 99
  set $x$ fileread abc
  set $x$ fileread
  filewrite 99 "text"
  fileclose 99
  set $f$ fileopen one.txt
  fileclose $f$
  set $x$ fileread $f$
  set $w$ fileopen new.txt write
  set $x$ fileread $w$
  set $r$ fileopen one.txt
  filewrite $r$ "no"
  set $x$ "before"
  set $x$ fileopen missing.txt
  print "x after a failed set: $x$"
  set $x$ fileopen adir
  set $x$ fileopen nodir/new.txt write
  set $x$ filesize missing.txt
  set $x$ filesize adir
  set $x$ getattrib missing.txt
  set $x$ replacestringinfile missing.txt a b
  set $x$ replacestringinfile adir a b
  set $g$ fileopen append.log
  set $x$ fileread $g$
  filewrite $g$ "added"
  fileclose
  set $s$ filesize append.log
  print "append.log grew from 9 to $s$ bytes"
  print "end"
endsub
