' Loaded at run time by load_statement.prg
sub main
endsub

sub second_helper
  print "second_helper: param[1]=[$param[1]$] count=[$param_count$]"
  notknown here
endsub
