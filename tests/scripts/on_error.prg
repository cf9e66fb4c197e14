' A script's own on_error subroutine handles warnings; with errorshow off nothing is shown
sub main
  errorshow off
  print "start"
  bogus one two
  print "after bogus"
  set $r$ 1 / 0
  print "after division r=[$r$]"
  call inner
  print "after inner"
  print "the last error's texts stay in the parameters: [$param[3]$]"
endsub

sub inner
  print "inner starts"
  alsobogus x
  print "inner ends"
endsub

sub on_error
  print "on_error severity=[$param[1]$] line=[$param[2]$]"
  print "  statement=[$param[3]$]"
  print "  windows=[$param[4]$]"
  if "$param[4]$" = ""
    print "  message=[$param[0]$]"
  endif
endsub
