' A warning in a statement that jumps: the jump is made first, then on_error runs and returns
' to where the run would have gone on
sub main
  errorshow off
  if regkeyexists "\\box\HKEY_CURRENT_USER\Software"
    print "FAIL true part"
  else
    print "else part"
  endif
  while regkeyexists "\\box\HKEY_CURRENT_USER\Software"
    print "FAIL while body"
  endwhile
  print "after while"
  set $n$ 0
  repeat
    set $n$ $n$ + 1
  until regkeyexists "\\box\HKEY_CURRENT_USER\Software$n$"
  print "FAIL after until"
endsub

sub on_error
  print "on_error for line $param[2]$"
  if $n$ = 2
    end
  endif
endsub
