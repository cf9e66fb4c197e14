' The text functions of set: codes, lengths, parts, case, searching, pieces, replacing, shifting.
' Positions and lengths count characters, not bytes. Each check prints its number, the call and
' the value between brackets.
sub main
  ' --- asc: Windows-1252 codes; a character outside that code page reads as 63
  set $r$ asc A
  print ^01 asc A = [$r$]^
  set $r$ asc "abc"
  print ^02 asc abc = [$r$]^
  set $r$ asc "€"
  print ^03 asc euro sign = [$r$]^
  set $r$ asc "é"
  print ^04 asc e acute = [$r$]^
  set $r$ asc "Äpfel"
  print ^05 asc Äpfel = [$r$]^
  set $r$ asc "œ"
  print ^06 asc oe ligature = [$r$]^
  set $r$ asc "Ω"
  print ^07 asc omega = [$r$]^
  set $r$ asc 7
  print ^08 asc 7 = [$r$]^
  set $r$ asc " x"
  print ^09 asc blank = [$r$]^
  ' --- chr: codes rounded half to even; a non-number gives nothing
  set $r$ chr 65
  print ^10 chr 65 = [$r$]^
  set $r$ chr 128
  print ^11 chr 128 = [$r$]^
  set $r$ chr 233
  print ^12 chr 233 = [$r$]^
  set $r$ chr 255
  print ^13 chr 255 = [$r$]^
  set $r$ chr 65.5
  print ^14 chr 65.5 = [$r$]^
  set $r$ chr 66.5
  print ^15 chr 66.5 = [$r$]^
  set $r$ chr 97.4
  print ^16 chr 97.4 = [$r$]^
  set $r$ chr 1e2
  print ^17 chr 1e2 = [$r$]^
  set $r$ chr abc
  print ^18 chr abc = [$r$]^
  set $r$ chr ""
  print ^19 chr empty = [$r$]^
  set $r$ chr 32
  print ^20 chr 32 = [$r$]^
  set $c$ chr 129
  set $r$ asc "$c$"
  print ^21 asc of chr 129 = [$r$]^
  set $c$ chr 200
  set $r$ asc "$c$"
  print ^22 asc of chr 200 = [$r$]^
  set $c$ chr 0
  set $r$ len "$c$"
  print ^23 len of chr 0 = [$r$]^
  ' --- len
  set $r$ len "Hello World"
  print ^24 len Hello World = [$r$]^
  set $r$ len "Grüße"
  print ^25 len Grüße = [$r$]^
  set $r$ len "€uro"
  print ^26 len €uro = [$r$]^
  set $r$ len ""
  print ^27 len empty = [$r$]^
  set $r$ len 12345
  print ^28 len 12345 = [$r$]^
  set $r$ len "123"
  print ^29 len of a quoted number = [$r$]^
  ' --- mid
  set $r$ mid "Hello World" 7 5
  print ^30 mid 7 5 = [$r$]^
  set $r$ mid "Hello World" 7
  print ^31 mid 7 = [$r$]^
  set $r$ mid "Hello World" 7 ""
  print ^32 mid 7 empty = [$r$]^
  set $r$ mid "Grüße" 3 2
  print ^33 mid Grüße 3 2 = [$r$]^
  set $r$ mid "ÄÖÜ" 2 1
  print ^34 mid ÄÖÜ 2 1 = [$r$]^
  set $r$ mid "Hello" 10 2
  print ^35 mid beyond the end = [$r$]^
  set $r$ mid "Hello" 6
  print ^36 mid just after the end = [$r$]^
  set $r$ mid "Hello" 2 0
  print ^37 mid length 0 = [$r$]^
  set $r$ mid "Hello" 4 100
  print ^38 mid length past the end = [$r$]^
  set $r$ mid "Hello" 1.5 2
  print ^39 mid 1.5 2 = [$r$]^
  set $r$ mid "Hello" 2.5 2
  print ^40 mid 2.5 2 = [$r$]^
  ' --- lcase, ucase, trim
  set $r$ lcase "Hello World"
  print ^41 lcase = [$r$]^
  set $r$ lcase "ÄÖÜ"
  print ^42 lcase ÄÖÜ = [$r$]^
  set $r$ ucase "Grüße"
  print ^43 ucase Grüße = [$r$]^
  set $r$ ucase "€uro"
  print ^44 ucase €uro = [$r$]^
  set $r$ trim "  ab c  "
  print ^45 trim = [$r$]^
  set $r$ trim "   "
  print ^46 trim blanks only = [$r$]^
  ' --- find: case is ignored, occurrences overlap
  set $r$ find "Hello" "LL"
  print ^47 find Hello LL = [$r$]^
  set $r$ find "aaa" "aa" 2
  print ^48 find aaa aa 2 = [$r$]^
  set $r$ find "aaa" "aa" 3
  print ^49 find aaa aa 3 = [$r$]^
  set $r$ find "aaa" "aa" 0
  print ^50 find aaa aa 0 = [$r$]^
  set $r$ find "aaa" "aa" -1
  print ^51 find aaa aa -1 = [$r$]^
  set $r$ find "abcabc" "c" ""
  print ^52 find empty occurrence = [$r$]^
  set $r$ find "abcabc" "x"
  print ^53 find missing = [$r$]^
  set $r$ find "abcabcabc" "abc" 2
  print ^54 find second abc = [$r$]^
  set $r$ find "abcabcabc" "abc" 2 x
  print ^55 find second abc from 2 = [$r$]^
  set $r$ find "xxaxxaxxa" "a" 3 y
  print ^56 find third a from 3 = [$r$]^
  set $r$ find "abc" "c" 4 y
  print ^57 find from past the end = [$r$]^
  set $r$ find "Grüße aus Köln" "KÖLN"
  print ^58 find KÖLN = [$r$]^
  set $r$ find "ÄÖÜ" "ü"
  print ^59 find ü = [$r$]^
  set $r$ find "İstanbul" "STAN"
  print ^60 find STAN = [$r$]^
  set $r$ find "Straße" "SS"
  print ^61 find SS in Straße = [$r$]^
  set $r$ find "abc" ""
  print ^62 find empty = [$r$]^
  set $r$ find "abc" "" 3
  print ^63 find empty 3 = [$r$]^
  set $r$ find "abc" "" 4
  print ^64 find empty 4 = [$r$]^
  set $r$ find "" ""
  print ^65 find empty in empty = [$r$]^
  ' --- findrev
  set $r$ findrev "abcabc" "bc"
  print ^66 findrev bc = [$r$]^
  set $r$ findrev "abcabc" "x"
  print ^67 findrev missing = [$r$]^
  set $r$ findrev "Hello" "L"
  print ^68 findrev L = [$r$]^
  set $r$ findrev "aaa" "aa"
  print ^69 findrev aa = [$r$]^
  set $r$ findrev "Grüße Grüße" "GRÜ"
  print ^70 findrev GRÜ = [$r$]^
  set $r$ findrev "abc" ""
  print ^71 findrev empty = [$r$]^
  set $r$ findrev "" "a"
  print ^72 findrev in empty = [$r$]^
  ' --- word: the separator is found without regard to case
  set $r$ word "a,b,c" "," 2
  print ^73 word 2 = [$r$]^
  set $r$ word "a,b,c" "," 3
  print ^74 word 3 = [$r$]^
  set $r$ word "a,b,c" "," 4
  print ^75 word beyond the last = [$r$]^
  set $r$ word "a,b,c" "," 0
  print ^76 word 0 = [$r$]^
  set $r$ word "a,b,c" "" 2
  print ^77 word empty separator = [$r$]^
  set $r$ word "a,b,c" "," -1
  print ^78 word -1 = [$r$]^
  set $r$ word "a,b,c" ","
  print ^79 word without n = [$r$]^
  set $r$ word "oneXtwoxthree" "x" 3
  print ^80 word case-blind = [$r$]^
  set $r$ word "oneXtwoxthree" "X" 2
  print ^81 word case-blind 2 = [$r$]^
  set $r$ word "a,,c" "," 2
  print ^82 word empty piece = [$r$]^
  set $r$ word "a b c" " " 2
  print ^83 word at blanks = [$r$]^
  set $r$ word "Grüße|aus|Köln" "|" 3
  print ^84 word Köln = [$r$]^
  set $r$ word "Straße" "SS" 1
  print ^85 word SS 1 = [$r$]^
  set $r$ word "Straße" "SS" 2
  print ^86 word SS 2 = [$r$]^
  ' --- replacestring: every occurrence, case-blind
  set $r$ replacestring "Hello World" o 0
  print ^87 replace o = [$r$]^
  set $r$ replacestring "aAaA" "a" "b"
  print ^88 replace case-blind = [$r$]^
  set $r$ replacestring "Grüße" "ÜSS" "x"
  print ^89 replace ÜSS = [$r$]^
  set $r$ replacestring "abc" "" "x"
  print ^90 replace empty = [$r$]^
  set $r$ replacestring "abcabc" "bc" ""
  print ^91 replace by nothing = [$r$]^
  set $r$ replacestring "aaa" "aa" "b"
  print ^92 replace left to right = [$r$]^
  ' --- encode and decode
  set $r$ encode abc 1
  print ^93 encode abc 1 = [$r$]^
  set $r$ encode 789 1
  print ^94 encode 789 1 = [$r$]^
  set $r$ decode ceg 1
  print ^95 decode ceg 1 = [$r$]^
  set $r$ decode 913 1
  print ^96 decode 913 1 = [$r$]^
  set $r$ encode abc ""
  print ^97 encode empty key = [$r$]^
  set $r$ encode abc
  print ^98 encode no key = [$r$]^
  set $r$ encode "Hello, World!" 3
  print ^99 encode Hello World 3 = [$r$]^
  set $r$ decode "$r$" 3
  print ^100 decode it = [$r$]^
  set $r$ encode "Grüße" 1
  print ^101 encode Grüße = [$r$]^
  set $n$ len "$r$"
  print ^102 its length = [$n$]^
  set $r$ decode "$r$" 1
  print ^103 decode it = [$r$]^
  set $r$ encode abc -5
  print ^104 encode abc -5 = [$r$]^
  set $r$ encode 789 -5
  print ^105 encode 789 -5 = [$r$]^
  set $r$ decode wya -5
  print ^106 decode wya -5 = [$r$]^
  set $r$ decode 357 -5
  print ^107 decode 357 -5 = [$r$]^
  set $r$ encode abc 1.5
  print ^108 encode key 1.5 = [$r$]^
  set $r$ encode a 32767
  print ^109 encode key 32767 = [$r$]^
  set $r$ encode abc x
  print ^110 encode key x = [$r$]^
  set $r$ encode "" 1
  print ^111 encode empty = [$r$]^
endsub
