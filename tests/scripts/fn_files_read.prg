' fileread over the forms a text file can take (fixtures in fn_files_read.files)
sub main
  call readall crlf.txt "crlf"
  call readall cr.txt "cr"
  call readall mixed.txt "mixed"
  call readall blank.txt "blank"
  call readall cp1252.txt "cp1252"
  call readall utf8.txt "utf8"

  ' a NUL byte doesn't end the line or the file
  set $f$ fileopen nul.txt
  set $l$ fileread $f$
  set $l$ fileread $f$
  print "nul: second line [$l$]"
  set $l$ fileread $f$
  print "nul: then [$l$]"
  fileclose $f$

  ' a line of 1 MB, written and read back
  set $f$ fileopen big.txt write
  filewrite $f$ "@BIG@"
  filewrite $f$ "after the big line"
  fileclose $f$
  set $s$ filesize big.txt
  print "big: size $s$"
  set $f$ fileopen big.txt
  set $l$ fileread $f$
  if "$l$" = "@BIG@"
    print "big: the long line reads back whole"
  else
    print "big: the long line differs"
  endif
  set $l$ fileread $f$
  print "big: then [$l$]"
endsub

sub readall
  set $h$ fileopen "$param[1]$"
  set $l$ fileread $h$
  while "$l$" <> "(eof)"
    print "$param[2]$: [$l$]"
    set $l$ fileread $h$
  endwhile
  fileclose $h$
endsub
