' Comparisons in conditions: numbers, texts, dates, missing operands and operator symbols
sub main
  set $a$ "x"
  set $b$ "y"
  set $n$ 5
  if 10 < 9
    print "01 10 < 9 compares numbers: true"
  else
    print "01 10 < 9 compares numbers: false"
  endif
  if 10 > 9
    print "02 10 > 9: true"
  else
    print "02 10 > 9: false"
  endif
  if 9 < 10
    print "03 9 < 10: true"
  else
    print "03 9 < 10: false"
  endif
  if 1000000 > 999999
    print "04 1000000 > 999999: true"
  else
    print "04 1000000 > 999999: false"
  endif
  if ABC = abc
    print "05 ABC = abc ignores case: true"
  else
    print "05 ABC = abc ignores case: false"
  endif
  if abc <> ABC
    print "06 abc <> ABC: true"
  else
    print "06 abc <> ABC: false"
  endif
  if apple < Banana
    print "07 apple < Banana: true"
  else
    print "07 apple < Banana: false"
  endif
  if a < B
    print "08 a < B compares lower-cased text: true"
  else
    print "08 a < B compares lower-cased text: false"
  endif
  if Zebra > apple
    print "09 Zebra > apple: true"
  else
    print "09 Zebra > apple: false"
  endif
  if abc < abcd
    print "10 abc < abcd: true"
  else
    print "10 abc < abcd: false"
  endif
  if abc = abcd
    print "11 abc = abcd: true"
  else
    print "11 abc = abcd: false"
  endif
  if "a b" = "A B"
    print "12 quoted operands with blanks: true"
  else
    print "12 quoted operands with blanks: false"
  endif
  if 10 < x
    print "13 a number is less than a text: true"
  else
    print "13 a number is less than a text: false"
  endif
  if 10 > x
    print "14 10 > x: true"
  else
    print "14 10 > x: false"
  endif
  if 10 = x
    print "15 10 = x: true"
  else
    print "15 10 = x: false"
  endif
  if x > 10
    print "16 x > 10: true"
  else
    print "16 x > 10: false"
  endif
  if x < 10
    print "17 x < 10: true"
  else
    print "17 x < 10: false"
  endif
  if 5 <> abc
    print "18 5 <> abc: true"
  else
    print "18 5 <> abc: false"
  endif
  if 12abc < 50
    print "19 12abc is a text, not 12: true"
  else
    print "19 12abc is a text, not 12: false"
  endif
  if 3.14159 > 3
    print "20 3.14159 > 3: true"
  else
    print "20 3.14159 > 3: false"
  endif
  if 1e3 = 1000
    print "21 1e3 = 1000: true"
  else
    print "21 1e3 = 1000: false"
  endif
  if -5 < 3
    print "22 -5 < 3: true"
  else
    print "22 -5 < 3: false"
  endif
  if +5 = 5
    print "23 +5 = 5: true"
  else
    print "23 +5 = 5: false"
  endif
  if 5 >= 5
    print "24 5 >= 5: true"
  else
    print "24 5 >= 5: false"
  endif
  if 4 <= 5
    print "25 4 <= 5: true"
  else
    print "25 4 <= 5: false"
  endif
  if 6 <= 5
    print "26 6 <= 5: true"
  else
    print "26 6 <= 5: false"
  endif
  if 5 <> 5
    print "27 5 <> 5: true"
  else
    print "27 5 <> 5: false"
  endif
  if 5<>6
    print "28 symbols without blanks: true"
  else
    print "28 symbols without blanks: false"
  endif
  if a<b
    print "29 a<b: true"
  else
    print "29 a<b: false"
  endif
  if "" < 5
    print "30 an empty text is greater than a number: true"
  else
    print "30 an empty text is greater than a number: false"
  endif
  if "" > 5
    print "31 empty > 5: true"
  else
    print "31 empty > 5: false"
  endif
  if $unset_a$ = $unset_b$
    print "32 two missing operands are equal: true"
  else
    print "32 two missing operands are equal: false"
  endif
  if $unset_a$ < 5
    print "33 a missing first operand leaves 5 as the first operand: true"
  else
    print "33 a missing first operand leaves 5 as the first operand: false"
  endif
  if equal
    print "34 equal without operands: true"
  else
    print "34 equal without operands: false"
  endif
  if lessthan 5
    print "35 lessthan 5 and nothing: true"
  else
    print "35 lessthan 5 and nothing: false"
  endif
  if 12/31/2001 > 1/1/2001
    print "36 dates: true"
  else
    print "36 dates: false"
  endif
  if 1/2/2001 > 12/1/2000
    print "37 dates, not texts: true"
  else
    print "37 dates, not texts: false"
  endif
  if 12/31/2001 > abc
    print "38 abc becomes 1 January 1801: true"
  else
    print "38 abc becomes 1 January 1801: false"
  endif
  if 1/1/1801 = zzz
    print "39 zzz becomes 1 January 1801: true"
  else
    print "39 zzz becomes 1 January 1801: false"
  endif
  if 2001-12-25 = 12/25/2001
    print "40 two date forms: true"
  else
    print "40 two date forms: false"
  endif
  if "Dec 25, 2001" = 12/25/2001
    print "41 a date written in words: true"
  else
    print "41 a date written in words: false"
  endif
  if 12/25/01 = 12/25/2001
    print "42 two-digit year: true"
  else
    print "42 two-digit year: false"
  endif
  if 40000 > 1/1/2001
    print "43 a plain number against a date becomes 1801: true"
  else
    print "43 a plain number against a date becomes 1801: false"
  endif
  if 1.5 < 2
    print "44 1.5 reads as a time, so 2 becomes 1801: true"
  else
    print "44 1.5 reads as a time, so 2 becomes 1801: false"
  endif
  if 1.5 > 2
    print "45 1.5 > 2: true"
  else
    print "45 1.5 > 2: false"
  endif
  if 2.5 > 2.25
    print "46 2.5 and 2.25 are the times 2:05 and 2:25: true"
  else
    print "46 2.5 and 2.25 are the times 2:05 and 2:25: false"
  endif
  if 10 = 10.0
    print "47 10.0 is a time: true"
  else
    print "47 10.0 is a time: false"
  endif
  if "a=b" = "a=b"
    print "48 the first = is rewritten even inside quotes: true"
  else
    print "48 the first = is rewritten even inside quotes: false"
  endif
  if "x>y" = "x>y"
    print "49 = goes before > whatever comes first: true"
  else
    print "49 = goes before > whatever comes first: false"
  endif
  if 5 => 3
    print "50 => is = followed by the text >: true"
  else
    print "50 => is = followed by the text >: false"
  endif
  if 5 == 5
    print "51 == leaves = as the second operand: true"
  else
    print "51 == leaves = as the second operand: false"
  endif
  if 3 < 5 >= 2
    print "52 >= goes before <: true"
  else
    print "52 >= goes before <: false"
  endif
  if $a$ <> $b$ = 1
    print "53 <> goes before =: true"
  else
    print "53 <> goes before =: false"
  endif
  if equal abc ABC
    print "54 test word equal: true"
  else
    print "54 test word equal: false"
  endif
  if greaterthan 12/31/2001 1/1/2001
    print "55 test word greaterthan: true"
  else
    print "55 test word greaterthan: false"
  endif
  if lessthanorequal 5 5
    print "56 test word lessthanorequal: true"
  else
    print "56 test word lessthanorequal: false"
  endif
  if greaterthanorequal a b
    print "57 test word greaterthanorequal: true"
  else
    print "57 test word greaterthanorequal: false"
  endif
  if notequal x y
    print "58 test word notequal: true"
  else
    print "58 test word notequal: false"
  endif
  if $n$ = 5
    print "59 substituted operand: true"
  else
    print "59 substituted operand: false"
  endif
  if $n$ = 5.0
    print "60 5.0 is a time: true"
  else
    print "60 5.0 is a time: false"
  endif
endsub
