' Only comments and blank lines: no subroutine main

   
	' another comment

