' A call stack of more than 10,000 frames is a fatal error (main's own frame counts), which
' on_error does not get to handle
sub main
  set $n$ 0
  call deeper
  print "FAIL the run went on after the fatal error"
endsub

sub deeper
  set $n$ $n$ + 1
  if $n$ = 9999
    print "depth 9999 reached: 10,000 frames with main's"
  endif
  if $n$ = 10000
    print "FAIL depth 10000 reached"
  endif
  call deeper
endsub

sub on_error
  print "FAIL on_error ran"
endsub
