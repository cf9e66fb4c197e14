' readini on files of 64000 bytes or more: the line reader, whose values are not trimmed
sub main
  writeini big.ini Big Key " padded value "
  writeini big.ini Big Quoted "'kept quotes'"
  writeini big.ini Next Other 1
  writeini small.ini Big Key " padded value "
  writeini small.ini Big Quoted "'kept quotes'"
  call read big.ini big key none
  call read small.ini big key none
  call read big.ini BIG QUOTED none
  call read small.ini big quoted none
  call read big.ini big other "none "
  call read big.ini next other none
  call read big.ini bi key none
  writeini big.ini Big Key changed
  call read big.ini big key none
  readinisection big.ini big
  print "readinisection: $readinisection[0]$ [$readinisection[1]$]"
endsub

' Prints readini of file $param[1]$, section $param[2]$, key $param[3]$, default $param[4]$.
sub read
  set $v$ readini $param[1]$ $param[2]$ $param[3]$ "$param[4]$"
  print ^$param[1]$ [$param[2]$] $param[3]$ = [$v$]^
endsub
