# A man page for each command, brenmark-convert.1 and so on: its part of brenmark.1, so that "man brenmark-convert"
# shows no more than that. The commands and what each is for are those that --help lists.
# cmake -D TOOL=brenmark -D PAGE=docs/brenmark.1 -D FOLDER=man1 [-D GZIP=gzip] -P CommandPages.cmake

file(READ "${PAGE}" page)
file(REMOVE_RECURSE "${FOLDER}")
file(MAKE_DIRECTORY "${FOLDER}")
execute_process(COMMAND "${TOOL}" --help OUTPUT_VARIABLE help COMMAND_ERROR_IS_FATAL ANY)

# Sets RESULT to what follows the first BEGIN in TEXT, up to END, and REST to what is after that.
function(cut text begin end result rest)
    string(FIND "${text}" "${begin}" at)
    set(${result} "" PARENT_SCOPE)
    set(${rest} "" PARENT_SCOPE)
    if(at EQUAL -1)
        return()
    endif()
    string(LENGTH "${begin}" length)
    math(EXPR at "${at} + ${length}")
    string(SUBSTRING "${text}" ${at} -1 text)
    string(FIND "${text}" "${end}" at)
    string(SUBSTRING "${text}" 0 ${at} found)
    set(${result} "${found}" PARENT_SCOPE)
    if(NOT at EQUAL -1)
        string(SUBSTRING "${text}" ${at} -1 text)
        set(${rest} "${text}" PARENT_SCOPE)
    endif()
endfunction()

# Sets RESULT to the synopses of a command.
function(synopses_of command result)
    cut("${page}" "\n.SH SYNOPSIS\n" "\n.SH " lines rest)
    set(lines "\n.br\n${lines}\n.br\n")
    set(found "")
    while(NOT lines STREQUAL "")
        cut("${lines}" "\n.br\n" "\n.br\n" one lines)
        string(FIND "${one}\n" ".B brenmark ${command}\n" at)
        if(at EQUAL 0)
            string(APPEND found "${one}\n.br\n")
        endif()
    endwhile()
    set(${result} "${found}" PARENT_SCOPE)
endfunction()

# Sets RESULT to the sections of a command, each under its heading.
function(sections_of command result)
    cut("${page}" "\n.SH COMMANDS" "\n.SH " commands rest)
    set(found "")
    while(NOT commands STREQUAL "")
        cut("${commands}" "\n.SS " "\n.SS " section commands)
        string(REGEX MATCH "^[a-z]+" name "${section}")
        if(name STREQUAL command)
            string(APPEND found ".SS ${section}\n")
        endif()
    endwhile()
    string(REPLACE "\nSee above." "\nSee\n.BR brenmark (1)." found "${found}")
    set(${result} "${found}" PARENT_SCOPE)
endfunction()

cut("${help}" "\nCommands:" "\n\n" commands rest)
while(commands MATCHES "\n  ([a-z]+) +([^\n]+)(.*)")
    set(command "${CMAKE_MATCH_1}")
    set(purpose "${CMAKE_MATCH_2}")
    set(commands "${CMAKE_MATCH_3}")
    synopses_of(${command} synopses)
    sections_of(${command} sections)
    if(sections STREQUAL "")
        continue()
    endif()
    string(REGEX MATCH "^.TH [^\n]*" title "${page}")
    string(TOUPPER "BRENMARK\\-${command}" name)
    string(REPLACE ".TH BRENMARK " ".TH ${name} " title "${title}")
    string(REPLACE "-" "\\-" purpose "${purpose}")
    string(SUBSTRING "${purpose}" 0 1 initial)
    string(TOLOWER "${initial}" initial)
    string(SUBSTRING "${purpose}" 1 -1 purpose)
    file(WRITE "${FOLDER}/brenmark-${command}.1"
"${title}
.SH NAME
brenmark\\-${command} \\- ${initial}${purpose}
.SH SYNOPSIS
${synopses}.SH DESCRIPTION
${sections}.SH SEE ALSO
.BR brenmark (1)
has the options of several commands, exit statuses, environment and files.
")
endwhile()
file(WRITE "${FOLDER}/brenmark.1" "${page}")
if(GZIP)
    file(GLOB pages "${FOLDER}/*.1")
    execute_process(COMMAND "${GZIP}" -9n ${pages} COMMAND_ERROR_IS_FATAL ANY)
endif()
