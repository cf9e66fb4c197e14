' The argument splitter: quotes, blanks, options in braces, eleven arguments; and what print shows
sub main
  call show one two three
  call show "two words" 'single quoted' ^caret quoted^
  call show    spaced     out
  call show a b {quiet}
  call show a "{not options}" b
  call show {quiet} a b
  call show "unclosed quote here
  call show 'it''s'
  call show "a"b c
  call show a"b c"d
  call show PREVIOUS
  call show "" x
  call show one two three four
  call show a "" b
	call	show	tab	separated
  call show x ^y z^ 'w'
  call show_all 1 2 3 4 5 6 7 8 9 10 11 12
  print "only slot one" "a title"
  print first second
  print
  print {clear}
  print "inserted" {insert}
  print 'single' title
  print ^caret^
  print "text {braces}"
  print "quoted" {quiet}
  PRINT "upper-case keyword"
  Print "mixed-case keyword"
  set $o$ "value" {quiet}
  print "set with options: [$o$]"
  set $o$ 'single'
  print "set single quotes: [$o$]"
  set $o$ ^caret^
  print "set carets: [$o$]"
  set $o$ "a b" + "c"
  print "set quoted operands: [$o$]"
endsub

sub show
  print ^[$param_count$] 1=[$param[1]$] 2=[$param[2]$] 3=[$param[3]$] 4=[$param[4]$]^
endsub

sub show_all
  print ^[$param_count$] $param[1]$ $param[2]$ $param[3]$ $param[4]$ $param[5]$ $param[6]$ $param[7]$ $param[8]$ $param[9]$ $param[10]$ [$param[11]$]^
endsub
