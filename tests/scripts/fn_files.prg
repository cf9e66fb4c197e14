' File functions and statements: fileopen, fileread, filewrite, fileclose, filesize,
' getattrib, dirsize, gettempdir, gettempfile, replacestringinfile (fixtures in fn_files.files)
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

  set $s$ filesize two.txt
  print "13 filesize: $s$"
  set $s$ filesize empty.txt
  print "14 filesize of an empty file: $s$"
  set $s$ filesize "sized\data.bin"
  print "15 filesize with a backslash path: $s$"

  set $t$ getattrib two.txt
  print "16 getattrib of a plain file: [$t$]"
  set $t$ getattrib .hidden.txt
  print "17 getattrib of a hidden file: [$t$]"
  set $t$ getattrib sized
  print "18 getattrib of a directory: [$t$]"

  set $k$ dirsize sized
  set $b$ dirsize sized B
  set $g$ dirsize sized g
  print "19 dirsize of 3072 bytes: [$k$] B [$b$] G [$g$]"
  set $k$ dirsize big
  set $m$ dirsize big M
  set $x$ dirsize big "other"
  print "20 dirsize of 1536 KB: [$k$] M [$m$] other unit [$x$]"
  set $k$ dirsize nowhere
  set $f$ dirsize two.txt
  print "21 dirsize of a missing directory [$k$] and of a file [$f$]"

  set $t$ gettempdir
  if "$t$" = "%TMPDIR%"
    print "22 gettempdir is TMPDIR"
  else
    print "22 gettempdir [$t$] is not TMPDIR"
  endif
  set $n$ gettempfile qlr create
  if fileexists "$n$"
    print "23 gettempfile with create makes the file"
  else
    print "23 gettempfile with create made no file [$n$]"
  endif
  set $s$ filesize "$n$"
  print "24 and it is empty: $s$"
  set $m$ gettempfile qlr
  if fileexists "$m$"
    print "25 gettempfile without create made a file [$m$]"
  else
    print "25 gettempfile without create gives a name only"
  endif
  if "$m$" = "$n$"
    print "26 two temporary names are the same"
  else
    print "26 two temporary names differ"
  endif

  set $r$ replacestringinfile cats.txt "cat" "dog"
  print "27 replacestringinfile count: $r$"
  call readall cats.txt "28"
  set $r$ replacestringinfile cats.txt "zebra" "horse"
  print "29 nothing to replace: $r$"
  set $r$ replacestringinfile cats.txt "" "horse"
  print "30 empty search: $r$"
  set $r$ replacestringinfile cats.txt "dog mat" ""
  print "31 replaced by nothing: $r$"
  call readall cats.txt "32"
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
