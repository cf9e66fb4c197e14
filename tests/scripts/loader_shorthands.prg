' How script lines are read: comments, blank lines, shorthands, tabs and the case of keywords
' (the forms of labels are in control_flow.prg)
	' a comment indented with a tab
    ' a comment indented with blanks

   
		
print "FAIL: lines before the subroutine main are not run"
SUB Main
  $a$ = 1
  $b$=2
  $sum$ = $a$ + $b$
  print "01 sum=$sum$"
  $copy$=$b$
  print "02 copy=$copy$"
  $eq$ = "p=q"
  print "03 eq=$eq$"
  $text$ =    "spaced after the sign"
  print "04 text=$text$"
  $n$ = 5
  $n$ = $n$ * 2
  print "05 n=$n$"

  ' a comment between statements
  print	"06 tab	inside"
  print it's not a comment
  $lonely$
  print "07 after the line that starts with a dollar sign and has no ="
  PRINT "08 upper case"
  pRiNt "09 mixed case"
EndSub
print "FAIL: lines after the end of main are not run"
