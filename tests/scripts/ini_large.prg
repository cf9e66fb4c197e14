' readini on files of 64000 bytes or more: the line reader, whose values are not trimmed
sub main
  writeini big.ini Big Key " padded value "
  writeini big.ini Big Quoted "'kept quotes'"
  writeini big.ini Next Other 1
  writeini small.ini Big Key " padded value "
  writeini small.ini Big Quoted "'kept quotes'"
  set $v$ readini big.ini big key "none"
  print "01 large file, untrimmed: [$v$]"
  set $v$ readini small.ini big key "none"
  print "02 small file, trimmed: [$v$]"
  set $v$ readini big.ini BIG QUOTED "none"
  print ^03 large file, quotes kept: [$v$]^
  set $v$ readini small.ini big quoted "none"
  print "04 small file, quotes removed: [$v$]"
  set $v$ readini big.ini big other "none "
  print "05 the next section ends the search: [$v$]"
  set $v$ readini big.ini next other "none"
  print "06 [$v$]"
  set $v$ readini big.ini bi key "none"
  print "07 the section name must end at the bracket: [$v$]"
  writeini big.ini Big Key changed
  set $v$ readini big.ini big key "none"
  print "08 a rewrite is seen at once and keeps the blank before the value: [$v$]"
  readinisection big.ini big
  print "09 readinisection: $readinisection[0]$ [$readinisection[1]$]"
endsub
