' How script lines are read: comments, blank lines, shorthands, tabs and the case of keywords
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
  goto alpha
  print "FAIL goto alpha"
:alpha
  print "07 reached :alpha by goto alpha"
  goto :beta
  print "FAIL goto :beta"
  label beta
  print "08 reached label beta by goto :beta"
  goto GAMMA
  print "FAIL goto GAMMA"
:Gamma
  print "09 labels ignore case"
  $lonely$
  print "10 after the line that starts with a dollar sign and has no ="
  PRINT "11 upper case"
  pRiNt "12 mixed case"
EndSub
print "FAIL: lines after the end of main are not run"
