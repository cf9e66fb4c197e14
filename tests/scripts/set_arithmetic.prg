' Values of set lines: literals and one operator between two operands
sub main
  set $r$ 5 + 3
  print ^01 5 + 3 = [$r$]^
  set $r$ 10 / 4
  print ^02 10 / 4 = [$r$]^
  set $r$ 7 / 3
  print ^03 7 / 3 = [$r$]^
  set $r$ 6 / 3
  print ^04 6 / 3 = [$r$]^
  set $r$ 2 * 3.5
  print ^05 2 * 3.5 = [$r$]^
  set $r$ 1 / 3
  print ^06 1 / 3 = [$r$]^
  set $r$ 2 / 3
  print ^07 2 / 3 = [$r$]^
  set $r$ 0.1 + 0.2
  print ^08 0.1 + 0.2 = [$r$]^
  set $r$ 5 - 8
  print ^09 5 - 8 = [$r$]^
  set $r$ 3 - 3
  print ^10 3 - 3 = [$r$]^
  set $r$ -3 + 1
  print ^11 -3 + 1 = [$r$]^
  set $r$ 4 * -2
  print ^12 4 * -2 = [$r$]^
  set $r$ -4 / 8
  print ^13 -4 / 8 = [$r$]^
  set $r$ "abc" + "def"
  print ^14 two texts joined = [$r$]^
  set $r$ "abc" + 1
  print ^15 a text and a number: the text reads as 0 = [$r$]^
  set $r$ 1 + "abc"
  print ^16 a number and a text = [$r$]^
  set $r$ "abc" * 2
  print ^17 a text times 2 = [$r$]^
  set $r$ " a " + " b "
  print ^18 joined texts keep their blanks = [$r$]^
  set $r$ "a" + ""
  print ^19 text and empty text = [$r$]^
  set $r$ "" + "b"
  print ^20 empty text and text = [$r$]^
  set $r$ "x" + "y" + "z"
  print ^21 only one operator is evaluated = [$r$]^
  set $r$ 5 + 3 + 2
  print ^22 5 + 3 + 2 = [$r$]^
  set $r$ "hello world"
  print ^23 a quoted text is one value = [$r$]^
  set $r$ 5
  print ^24 a number alone = [$r$]^
  set $r$ 5.50
  print ^25 a number alone keeps its form = [$r$]^
  set $r$ 5.50 + 0
  print ^26 5.50 + 0 is formatted = [$r$]^
  set $r$ 007
  print ^27 007 alone = [$r$]^
  set $r$ 007 + 0
  print ^28 007 + 0 = [$r$]^
  set $r$ "  padded  "
  print ^29 a value alone is trimmed = [$r$]^
  set $r$ 5 x 3
  print ^30 an unknown operator keeps the first operand = [$r$]^
  set $r$ 5 +- 3
  print ^31 +- is no operator = [$r$]^
  set $r$ 5 +
  print ^32 a missing second operand reads as 0 = [$r$]^
  set $r$ 7 - abc
  print ^33 7 - abc = [$r$]^
  set $r$ "12abc" + 1
  print ^34 12abc reads as 12 next to a number = [$r$]^
  set $r$ "3.7.2" + 0
  print ^35 3.7.2 reads as 3.7 = [$r$]^
  set $r$ 1,000 + 1
  print ^36 the comma stops the reading of 1,000 = [$r$]^
  set $r$ 1e3 + 1
  print ^37 1e3 + 1 = [$r$]^
  set $r$ 1.5e2 + 0
  print ^38 1.5e2 + 0 = [$r$]^
  set $r$ 1000000 * 1000000
  print ^39 a million squared = [$r$]^
  set $r$ 100000000 * 100000000
  print ^40 ten to the 16th = [$r$]^
  set $r$ 1e15 + 0
  print ^41 ten to the 15th = [$r$]^
  set $r$ 999999999999999 + 0
  print ^42 fifteen nines = [$r$]^
  set $r$ 0.0001 * 1
  print ^43 0.0001 = [$r$]^
  set $r$ 0.00001 * 1
  print ^44 0.00001 = [$r$]^
  set $r$ 2.5 * 2
  print ^45 2.5 * 2 = [$r$]^
  set $r$ 10 / 4 {quiet}
  print ^46 options are not operands = [$r$]^
endsub
