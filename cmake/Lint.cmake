# The target lint: each linter reads the files of its kind, and reads one again only after that file, what it includes
# or the linter's rules have changed.
include(ProcessorCount)
ProcessorCount(processors)

# lint(LINTER FILE COMMAND... DEPENDS... [DEPFILE OPTION]): what the linter prints is shown only if it fails, since
# clang-tidy also counts what it does not report. The log of a file without findings is the stamp. DEPFILE names the
# option by which the command writes down what the file includes.
function(lint linter file)
    cmake_parse_arguments(PARSE_ARGV 2 lint "" DEPFILE "COMMAND;DEPENDS")
    string(MAKE_C_IDENTIFIER "${linter} ${file}" name)
    set(stamp ${PROJECT_BINARY_DIR}/lint/${name})
    list(TRANSFORM lint_DEPENDS PREPEND ${PROJECT_SOURCE_DIR}/) # scripts/test alone would be taken for the target test
    set(includes)
    if(lint_DEPFILE)
        list(APPEND lint_COMMAND ${lint_DEPFILE}${stamp}.d)
        set(includes COMMAND sed -i "1s|^[^:]*:|lint/${name}:|" ${stamp}.d DEPFILE ${stamp}.d)
    endif()
    add_custom_command(OUTPUT ${stamp}
        COMMAND sh -c "\"$@\" >\"$0.log\" 2>&1 && mv \"$0.log\" \"$0\" || { cat \"$0.log\"; exit 1; }" ${stamp}
            ${lint_COMMAND}
        ${includes}
        DEPENDS ${lint_DEPENDS}
        WORKING_DIRECTORY ${PROJECT_SOURCE_DIR}
        COMMENT "${linter} ${file}" VERBATIM)
    set_property(DIRECTORY APPEND PROPERTY PEBBLETON_LINT ${stamp})
endfunction()

execute_process(COMMAND find . ( -path ./build -o -path ./.git ) -prune -o -type f -printf "%P\\n"
    WORKING_DIRECTORY ${PROJECT_SOURCE_DIR} OUTPUT_VARIABLE files COMMAND_ERROR_IS_FATAL ANY)
string(REPLACE "\n" ";" files "${files}")
list(SORT files)
set(code ${files})
list(FILTER code INCLUDE REGEX "\\.(cpp|h)$")
set(sources ${code})
list(FILTER sources INCLUDE REGEX "\\.cpp$")
set(pages ${files})
list(FILTER pages INCLUDE REGEX "^man/")
set(prose ${files})
list(FILTER prose INCLUDE REGEX "\\.md$")
set(tidyRules ${files})
list(FILTER tidyRules INCLUDE REGEX "(^|/)\\.clang-tidy$")
set(scripts)
set(fragments) # of scripts, which source them
foreach(file IN LISTS files)
    file(READ ${PROJECT_SOURCE_DIR}/${file} start LIMIT 32)
    if(start MATCHES "^#![^\n]*sh[ \n]")
        list(APPEND scripts ${file})
    elseif(file MATCHES "\\.sh$")
        list(APPEND fragments ${file})
    endif()
endforeach()

# What cppcheck is told not to say:
#   missingIncludeSystem    it is not shown the system's headers
#   useStlAlgorithm         a loop that changes what it visits is clearer as a loop
file(MAKE_DIRECTORY ${PROJECT_BINARY_DIR}/lint/cppcheck)
set(checked ${code})
list(FILTER checked INCLUDE REGEX "^(bench|include|src|tools)/")
lint(cppcheck "the code"
    COMMAND cppcheck --quiet -j${processors} --cppcheck-build-dir=${PROJECT_BINARY_DIR}/lint/cppcheck --std=c++17
        --language=c++ --enable=warning,style,performance,portability --inline-suppr --error-exitcode=1 -I bench
        -I include -I src --suppress=missingIncludeSystem --suppress=useStlAlgorithm bench src include tools
    DEPENDS ${checked})

# A file that two targets compile is read once.
set_target_properties(renamed-main finger PROPERTIES EXPORT_COMPILE_COMMANDS OFF)
foreach(source IN LISTS sources)
    # clang-tidy removes the compiler's -M options, but for one that is the preprocessor's.
    lint(clang-tidy ${source}
        COMMAND clang-tidy --quiet -p ${PROJECT_BINARY_DIR} ${source} DEPFILE --extra-arg=-Wp,-MMD,
        DEPENDS ${source} ${tidyRules} cmake/Flags.cmake)
endforeach()
foreach(script IN LISTS scripts)
    lint(shellcheck ${script} COMMAND shellcheck -x ${script} DEPENDS ${script} ${fragments} .shellcheckrc)
endforeach()
foreach(fragment IN LISTS fragments)
    # Its variables are set or used by the script that sources it.
    lint(shellcheck ${fragment} COMMAND shellcheck -x -s bash -e SC2034,SC2154 ${fragment}
        DEPENDS ${fragments} .shellcheckrc)
endforeach()
foreach(file IN LISTS code)
    lint(clang-format ${file} COMMAND clang-format --dry-run -Werror ${file} DEPENDS ${file} .clang-format)
endforeach()
foreach(page IN LISTS pages)
    lint(mandoc ${page} COMMAND mandoc -Tlint -Wwarning ${page} DEPENDS ${page})
endforeach()
foreach(text IN LISTS prose)
    lint(width ${text} COMMAND sh -c "! LC_ALL=C.UTF-8 grep -HnE '^.{121}' \"$0\"" ${text} DEPENDS ${text})
endforeach()

get_property(stamps DIRECTORY PROPERTY PEBBLETON_LINT)
add_custom_target(lint DEPENDS ${stamps})
