' Dates in set lines: minus counts day boundaries
sub main
  set $r$ "12/25/2001" - "12/1/2001"
  print ^01 days between two dates = [$r$]^
  set $r$ "12/1/2001" - "12/25/2001"
  print ^02 an earlier date first gives a negative count = [$r$]^
  set $r$ "12/25/2001" - "abc"
  print ^03 a non-date counts as 1 January 1965 = [$r$]^
  set $r$ "abc" - "12/25/2001"
  print ^04 a non-date first = [$r$]^
  set $r$ "1/1/1965" - "nodate"
  print ^05 1 January 1965 itself = [$r$]^
  set $r$ "12/26/2001 1:00 AM" - "12/25/2001 11:00 PM"
  print ^06 day boundaries are counted, not whole days = [$r$]^
  set $r$ "12/25/2001 11:00 PM" - "12/25/2001 1:00 AM"
  print ^07 the same day = [$r$]^
  set $r$ "1/1/2001" - "12/31/2000"
  print ^08 across the turn of a year = [$r$]^
  set $r$ "3/1/2000" - "2/28/2000"
  print ^09 leap day in 2000 = [$r$]^
  set $r$ "3/1/2001" - "2/28/2001"
  print ^10 no leap day in 2001 = [$r$]^
  set $r$ "Dec 25, 2001" - "2001-12-01"
  print ^11 dates written in other forms = [$r$]^
  set $r$ "10:30" - "abc"
  print ^12 a time alone lies on 30 December 1899 = [$r$]^
  set $r$ "12/25/2001" + "x"
  print ^13 + joins texts, dates or not = [$r$]^
  set $r$ "12/25/2001"
  print ^14 a date alone is kept as written = [$r$]^
endsub
