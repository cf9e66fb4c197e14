' web hands addresses and files to the desktop's opener without waiting for it; the opener here
' is a stand-in (process_web.files/bin/xdg-open) that notes what it was given
sub main
  web "https://example.org/?q=quiller"
  shell "until grep -q example opened.txt 2>/dev/null; do sleep 0.05; done" {wait}
  web "docs\report 2.pdf"
  shell "until grep -q report opened.txt 2>/dev/null; do sleep 0.05; done" {wait}
  print "the script goes on"
  call show opened.txt
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
