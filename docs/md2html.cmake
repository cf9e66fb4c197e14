# Turns the language reference (docs/language.md) into the single self-contained HTML page
# readme-quiller.htm that ships beside the executables.
#
#   cmake -DINPUT=docs/language.md -DOUTPUT=readme-quiller.htm [-DVERSION=x.y.z] -P md2html.cmake
#
# It understands the plain Markdown the reference is written in: "#", "##" and "###" headings,
# paragraphs, "- " and "1. " lists (continuation lines indented), "|" tables with a separator row,
# fenced code blocks, `code` and **bold**. Nothing else is needed to build the page.
cmake_minimum_required(VERSION 3.25)

if(NOT DEFINED INPUT OR NOT DEFINED OUTPUT)
  message(FATAL_ERROR "usage: cmake -DINPUT=file.md -DOUTPUT=file.htm [-DVERSION=x.y.z] -P md2html.cmake")
endif()

# Characters that CMake lists treat specially travel as control characters until the end.
string(ASCII 1 SEMI)
string(ASCII 2 LBR)
string(ASCII 3 RBR)
string(ASCII 4 BSL)

file(READ "${INPUT}" md)
string(REPLACE "\r" "" md "${md}")
string(REPLACE "&" "&amp;" md "${md}")
string(REPLACE "<" "&lt;" md "${md}")
string(REPLACE ">" "&gt;" md "${md}")
string(REPLACE "\\" "${BSL}" md "${md}")
string(REPLACE ";" "${SEMI}" md "${md}")
string(REPLACE "[" "${LBR}" md "${md}")
string(REPLACE "]" "${RBR}" md "${md}")
string(REPLACE "\n" ";" lines "${md}")

# Inline markup of one line of text.
function(inline text out)
  string(REGEX REPLACE "`([^`]+)`" "<code>\\1</code>" text "${text}")
  string(REGEX REPLACE "\\*\\*([^*]+)\\*\\*" "<strong>\\1</strong>" text "${text}")
  set(${out} "${text}" PARENT_SCOPE)
endfunction()

# Anchor name of a heading: lower case letters and digits joined by "-".
function(anchor text out)
  string(REGEX REPLACE "<[^>]*>" "" text "${text}")
  string(TOLOWER "${text}" text)
  string(REGEX REPLACE "[^a-z0-9]+" "-" text "${text}")
  string(REGEX REPLACE "^-+|-+$" "" text "${text}")
  set(${out} "${text}" PARENT_SCOPE)
endfunction()

set(body "")
set(toc "")
set(title "Quiller")
set(mode "")        # "", p, ul, ol, table, code
set(li_open FALSE)
set(table_row 0)

macro(close_block)
  if(li_open)
    string(APPEND body "</li>\n")
    set(li_open FALSE)
  endif()
  if(mode STREQUAL "p")
    string(APPEND body "</p>\n")
  elseif(mode STREQUAL "ul")
    string(APPEND body "</ul>\n")
  elseif(mode STREQUAL "ol")
    string(APPEND body "</ol>\n")
  elseif(mode STREQUAL "table")
    string(APPEND body "</tbody></table>\n")
  endif()
  set(mode "")
endmacro()

foreach(line IN LISTS lines)
  if(mode STREQUAL "code")
    if(line MATCHES "^```")
      string(APPEND body "</pre>\n")
      set(mode "")
    else()
      string(APPEND body "${line}\n")
    endif()
    continue()
  endif()

  if(line MATCHES "^```")
    close_block()
    string(APPEND body "<pre>")
    set(mode "code")
  elseif(line MATCHES "^[ \t]*$")
    close_block()
  elseif(line MATCHES "^(#+)[ \t]+(.*)$")
    close_block()
    string(LENGTH "${CMAKE_MATCH_1}" level)
    set(raw "${CMAKE_MATCH_2}")
    inline("${raw}" text)
    anchor("${text}" id)
    if(level EQUAL 1)
      string(REGEX REPLACE "<[^>]*>" "" title "${text}")
      string(APPEND body "<h1 id=\"${id}\">${text}</h1>\n@TOC@\n")
    else()
      string(APPEND body "<h${level} id=\"${id}\">${text}</h${level}>\n")
      if(level EQUAL 2)
        string(APPEND toc "<li><a href=\"#${id}\">${text}</a></li>\n")
      endif()
    endif()
  elseif(line MATCHES "^\\|")
    if(NOT mode STREQUAL "table")
      close_block()
      string(APPEND body "<table>\n")
      set(mode "table")
      set(table_row 0)
    endif()
    math(EXPR table_row "${table_row} + 1")
    if(table_row EQUAL 2 AND line MATCHES "^[|: -]+$")
      string(APPEND body "<tbody>\n")
      continue()
    endif()
    string(REGEX REPLACE "^\\|(.*)\\|[ \t]*$" "\\1" cells "${line}")
    string(REPLACE "|" ";" cells "${cells}")
    if(table_row EQUAL 1)
      set(tag "th")
      string(APPEND body "<thead><tr>")
    else()
      set(tag "td")
      string(APPEND body "<tr>")
    endif()
    foreach(cell IN LISTS cells)
      string(STRIP "${cell}" cell)
      inline("${cell}" cell)
      string(APPEND body "<${tag}>${cell}</${tag}>")
    endforeach()
    if(table_row EQUAL 1)
      string(APPEND body "</tr></thead>\n")
    else()
      string(APPEND body "</tr>\n")
    endif()
  elseif(line MATCHES "^(- |[0-9]+\\. )(.*)$")
    set(item "${CMAKE_MATCH_2}")
    if(CMAKE_MATCH_1 STREQUAL "- ")
      set(kind "ul")
    else()
      set(kind "ol")
    endif()
    if(NOT mode STREQUAL kind)
      close_block()
      string(APPEND body "<${kind}>\n")
      set(mode "${kind}")
    elseif(li_open)
      string(APPEND body "</li>\n")
    endif()
    inline("${item}" item)
    string(APPEND body "<li>${item}")
    set(li_open TRUE)
  elseif(li_open AND line MATCHES "^[ \t]+(.*)$")
    inline("${CMAKE_MATCH_1}" text)
    string(APPEND body "\n${text}")
  else()
    if(NOT mode STREQUAL "p")
      close_block()
      string(APPEND body "<p>")
      set(mode "p")
    else()
      string(APPEND body "\n")
    endif()
    string(STRIP "${line}" line)
    inline("${line}" text)
    string(APPEND body "${text}")
  endif()
endforeach()
if(mode STREQUAL "code")
  string(APPEND body "</pre>\n")
  set(mode "")
endif()
close_block()

if(toc)
  string(REPLACE "@TOC@" "<nav><ul class=\"toc\">\n${toc}</ul></nav>" body "${body}")
else()
  string(REPLACE "@TOC@" "" body "${body}")
endif()

set(footer "")
if(DEFINED VERSION AND NOT VERSION STREQUAL "")
  set(footer "<footer>Quiller ${VERSION}</footer>\n")
endif()

set(html "<!DOCTYPE html>
<html lang=\"en\">
<head>
<meta charset=\"utf-8\">
<title>${title}</title>
<style>
body { font-family: Segoe UI, Helvetica, Arial, sans-serif; max-width: 56em; margin: 2em auto;
       padding: 0 1em; line-height: 1.45; color: #222; }
h1, h2, h3 { color: #1b3d6d; }
h2 { border-bottom: 1px solid #ccd; padding-bottom: .2em; margin-top: 2em; }
code, pre { font-family: Consolas, Menlo, monospace; font-size: 92%; }
code { background: #f2f2f6; padding: 0 .2em; }
pre { background: #f2f2f6; border: 1px solid #dde; padding: .6em .8em; overflow-x: auto; }
table { border-collapse: collapse; margin: .8em 0; }
th, td { border: 1px solid #ccd; padding: .25em .6em; text-align: left; vertical-align: top; }
th { background: #e8ecf4; }
nav ul.toc { columns: 2; background: #f8f8fb; border: 1px solid #dde; padding: .6em 2em; }
footer { margin-top: 3em; color: #888; font-size: 85%; }
</style>
</head>
<body>
${body}${footer}</body>
</html>
")

string(REPLACE "${SEMI}" ";" html "${html}")
string(REPLACE "${LBR}" "[" html "${html}")
string(REPLACE "${RBR}" "]" html "${html}")
string(REPLACE "${BSL}" "\\" html "${html}")

file(WRITE "${OUTPUT}.tmp" "${html}")
file(COPY_FILE "${OUTPUT}.tmp" "${OUTPUT}" ONLY_IF_DIFFERENT)
file(REMOVE "${OUTPUT}.tmp")
