' shell runs a command line through the system's shell: waiting or not, %NAME% references
' expanded once more, and the warnings for mismatched "%" and programs that can't be found
sub main
  shell "echo waited > waited.txt" {wait hidden}
  if fileexists waited.txt
    print "waited: written"
  endif

  ' without wait, the program runs on its own: this one waits for go.txt first
  shell "while [ ! -e go.txt ]; do sleep 0.05; done; echo late > late.txt" {minimized}
  if fileexists late.txt
    print "not waited: written already"
  else
    print "not waited: not written yet"
  endif
  shell "echo go > go.txt; while [ ! -s late.txt ]; do sleep 0.05; done" {wait}
  if fileexists late.txt
    print "not waited: written later"
  endif

  ' the loop turns %% into %, then shell expands %QP_WORD% itself
  shell "echo %%QP_WORD%% > word.txt" {wait}
  call show word.txt

  ' a waited program's exit status doesn't matter
  shell "exit 3" {wait}

  shell "echo 100%% > percent.txt" {wait}
  if fileexists percent.txt
    print "mismatched: ran anyway"
  endif
  shell "quiller-no-such-program --now" {wait}
  shell "quiller-no-such-program --later"
  shell "./missing.sh %%QP_WORD%%"
  print "end"
endsub

sub show
  set $h$ fileopen "$param[1]$"
  set $l$ fileread $h$
  print "$param[1]$: [$l$]"
  fileclose $h$
endsub
