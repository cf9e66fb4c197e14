' File and directory tests in conditions (fixtures in conditions_files.files)
sub main
  if fileexists a.txt
    print "01 fileexists on a file: true"
  else
    print "01 fileexists on a file: false"
  endif
  if fileexists missing.txt
    print "02 fileexists on a missing file: true"
  else
    print "02 fileexists on a missing file: false"
  endif
  if fileexists ""
    print "03 fileexists with an empty operand: true"
  else
    print "03 fileexists with an empty operand: false"
  endif
  if fileexists subdir
    print "04 fileexists on a directory: true"
  else
    print "04 fileexists on a directory: false"
  endif
  if fileexists *.txt
    print "05 fileexists with a wildcard: true"
  else
    print "05 fileexists with a wildcard: false"
  endif
  if fileexists ?.txt
    print "06 fileexists with a question mark: true"
  else
    print "06 fileexists with a question mark: false"
  endif
  if fileexists logs/*.log
    print "07 fileexists with a wildcard in a subdirectory: true"
  else
    print "07 fileexists with a wildcard in a subdirectory: false"
  endif
  if fileexists logs/*.xyz
    print "08 fileexists with a wildcard that matches nothing: true"
  else
    print "08 fileexists with a wildcard that matches nothing: false"
  endif
  if fileexists "my file.txt"
    print "09 fileexists on a quoted name with a blank: true"
  else
    print "09 fileexists on a quoted name with a blank: false"
  endif
  if fileexists my file.txt
    print "10 fileexists on an unquoted name with a blank takes the first word: true"
  else
    print "10 fileexists on an unquoted name with a blank takes the first word: false"
  endif
  if not fileexists missing.txt
    print "11 not fileexists on a missing file: true"
  else
    print "11 not fileexists on a missing file: false"
  endif
  if direxists subdir
    print "12 direxists on a directory: true"
  else
    print "12 direxists on a directory: false"
  endif
  if direxists "sub dir"
    print "13 direxists on a quoted name with a blank: true"
  else
    print "13 direxists on a quoted name with a blank: false"
  endif
  if direxists .
    print "14 direxists on the working directory: true"
  else
    print "14 direxists on the working directory: false"
  endif
  if direxists a.txt
    print "15 direxists on a file: true"
  else
    print "15 direxists on a file: false"
  endif
  if direxists nowhere
    print "16 direxists on a missing path: true"
  else
    print "16 direxists on a missing path: false"
  endif
  if filesame a.txt b.txt
    print "17 filesame on equal sizes and times: true"
  else
    print "17 filesame on equal sizes and times: false"
  endif
  if filesame a.txt a.txt
    print "18 filesame on the same file: true"
  else
    print "18 filesame on the same file: false"
  endif
  if filesame a.txt c.txt
    print "19 filesame on different sizes: true"
  else
    print "19 filesame on different sizes: false"
  endif
  if filesame a.txt d.txt
    print "20 filesame 4 seconds apart: true"
  else
    print "20 filesame 4 seconds apart: false"
  endif
  if filesame a.txt e.txt
    print "21 filesame 5 seconds apart: true"
  else
    print "21 filesame 5 seconds apart: false"
  endif
  if filesame a.txt f.txt
    print "22 filesame 3 seconds apart the other way: true"
  else
    print "22 filesame 3 seconds apart the other way: false"
  endif
  if filesame a.txt missing.txt
    print "23 filesame with a missing file: true"
  else
    print "23 filesame with a missing file: false"
  endif
  if filesame missing.txt missing.txt
    print "24 filesame on two missing files: true"
  else
    print "24 filesame on two missing files: false"
  endif
endsub
