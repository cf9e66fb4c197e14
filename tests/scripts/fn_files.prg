' File functions and statements: fileopen, fileread, filewrite, fileclose, filesize,
' getattrib, dirsize, gettempdir, gettempfile, replacestringinfile (fixtures in fn_files.files).
' Each line of calls.txt ("' " starts a comment) runs as "set $r$ CALL" and is printed with the
' value between brackets, "-" when the call set nothing.
sub main
  set $f$ fileopen "out.txt" write
  print "01 first file number: $f$"
  filewrite $f$ "hello world"
  filewrite $f$
  filewrite $f$ last
  fileclose $f$
  call readall out.txt "02"
  set $s$ filesize out.txt
  print "03 size of three written lines: $s$"

  set $f$ fileopen out.txt append
  filewrite $f$ "appended line"
  fileclose $f$
  call readall out.txt "04"

  ' "write" as a2 wins over "append" anywhere in the line
  set $append$ fileopen "w.txt" write
  filewrite $append$ "one"
  fileclose $append$
  set $append$ fileopen "w.txt" write
  filewrite $append$ "two"
  fileclose $append$
  call readall w.txt "05"
  ' any other a2 reads
  set $f$ fileopen two.txt anything
  set $l$ fileread $f$
  print "06 other mode reads: [$l$]"
  fileclose $f$

  ' numbers: the lowest free one is taken again
  set $a$ fileopen two.txt
  set $b$ fileopen cats.txt
  set $c$ fileopen plain.txt
  print "07 three open files: $a$ $b$ $c$"
  fileclose $b$
  set $d$ fileopen empty.txt
  print "08 a closed number is handed out again: $d$"
  set $l$ fileread $d$
  print "09 an empty file reads: [$l$]"
  set $l$ fileread $a$
  set $m$ fileread $c$
  print "10 files read side by side: [$l$] [$m$]"
  fileclose
  set $f$ fileopen two.txt
  print "11 after fileclose without a number: $f$"
  set $l$ fileread " 1.0 "
  print "12 a number given as 1.0 with blanks: [$l$]"
  set $l$ fileread "$f$"
  print "12 a quoted number: [$l$]"
  fileclose 1

  set $f$ fileopen calls.txt
  set $call$ fileread $f$
  while ^$call$^ <> "(eof)"
    set $at$ find ^$call$^ "' "
    if $at$ <> 1
      set $r$ "-"
      set $r$ $call$
      print ^$call$ = [$r$]^
    endif
    set $call$ fileread $f$
  endwhile
  fileclose $f$
  call readall cats.txt "13"

  set $t$ gettempdir
  if "$t$" = "%TMPDIR%"
    print "14 gettempdir is TMPDIR"
  endif
  set $n$ gettempfile qlr create
  if fileexists "$n$"
    print "15 gettempfile with create makes the file"
  endif
  set $s$ filesize "$n$"
  print "16 and it is empty: $s$"
  set $m$ gettempfile qlr
  if not fileexists "$m$"
    print "17 gettempfile without create gives a name only"
  endif
  if "$m$" <> "$n$"
    print "18 two temporary names differ"
  endif
endsub

' Prints every line of a file in brackets, then one more read past the end.
sub readall
  set $h$ fileopen "$param[1]$"
  set $l$ fileread $h$
  while "$l$" <> "(eof)"
    print "$param[2]$ [$l$]"
    set $l$ fileread $h$
  endwhile
  set $l$ fileread $h$
  print "$param[2]$ again [$l$]"
  fileclose $h$
endsub
