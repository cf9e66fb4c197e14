' A number written in quotes on a set line is that number: each argument keeps one layer of
' quotes for the evaluator, which removes it again
sub main
  set $r$ "5"
  print ^01 a quoted number alone = [$r$]^
  set $r$ "5" + "5"
  print ^02 two quoted numbers are added = [$r$]^
  set $r$ " 5 " + 1
  print ^03 blanks around a quoted number = [$r$]^
  set $r$ '7' + 1
  print ^04 the same with single quotes = [$r$]^
  set $r$ 5 + 1
  print ^05 an unquoted number for comparison = [$r$]^
  set $r$ 5 "+" 1
  print ^06 a quoted operator is still the operator = [$r$]^
endsub
