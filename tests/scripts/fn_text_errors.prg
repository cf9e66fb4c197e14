' Text functions given arguments they can't use: each failure is a warning, the run goes on,
' and the set line assigns nothing, so $r$ keeps its value
sub main
  set $r$ "unchanged"
  set $r$ mid "Hello" 0 2
  print ^mid start 0 = [$r$]^
  set $r$ mid "Hello" -1
  print ^mid start -1 = [$r$]^
  set $r$ mid "Hello" 2 -1
  print ^mid length -1 = [$r$]^
  set $r$ chr 70000
  print ^chr 70000 = [$r$]^
  set $r$ chr -1
  print ^chr -1 = [$r$]^
  set $r$ chr 255.5
  print ^chr 255.5 = [$r$]^
  set $r$ asc ""
  print ^asc empty = [$r$]^
  set $r$ encode abc 32768
  print ^encode key 32768 = [$r$]^
  set $r$ decode abc -32769
  print ^decode key -32769 = [$r$]^
  set $r$ find "abc" "b" 3000000000
  print ^find occurrence 3000000000 = [$r$]^
  print "end"
endsub
