# clang-tidy and cppcheck, as part of the build so that an unchanged file is not read again.
find_program(CLANG_TIDY clang-tidy)
find_program(CPPCHECK cppcheck)
if(NOT CLANG_TIDY OR NOT CPPCHECK)
    message(FATAL_ERROR "PEBBLETON_LINT needs clang-tidy and cppcheck")
endif()

# Each file in the build that compiles it.
file(GLOB lintHeaders CONFIGURE_DEPENDS bench/*.h include/*.h src/*.h tests/*.h tools/*/*.h)
if(PEBBLETON_SANITIZERS)
    file(GLOB lintSources CONFIGURE_DEPENDS fuzz/*.cpp)
else()
    file(GLOB lintSources CONFIGURE_DEPENDS bench/*.cpp src/*.cpp tests/*.cpp tools/*/*.cpp)
    if(PEBBLETON_VIRTUAL_DEVICE)
        list(APPEND lintSources ${CMAKE_CURRENT_SOURCE_DIR}/scripts/virtual-device/Panel.cpp)
    endif()
    if(NOT PEBBLETON_PEERS)
        list(FILTER lintSources EXCLUDE REGEX "/(SdlMenu|StandingTime)\\.cpp$")
    endif()
endif()
foreach(source IN LISTS lintSources)
    string(MAKE_C_IDENTIFIER ${source} stamp)
    set(stamp ${CMAKE_CURRENT_BINARY_DIR}/lint/${stamp})
    add_custom_command(OUTPUT ${stamp}
        # What it says when all is well is a count of what it does not say.
        COMMAND sh -c "\"$@\" >\"$0.log\" 2>&1 || { cat \"$0.log\"; exit 1; }" ${stamp}
            ${CLANG_TIDY} --quiet -p ${CMAKE_CURRENT_BINARY_DIR} ${source}
        COMMAND ${CMAKE_COMMAND} -E touch ${stamp}
        DEPENDS ${source} ${lintHeaders} ${CMAKE_CURRENT_SOURCE_DIR}/.clang-tidy ${CMAKE_CURRENT_SOURCE_DIR}/tests/.clang-tidy
        COMMENT "clang-tidy ${source}" VERBATIM)
    list(APPEND lintStamps ${stamp})
endforeach()

if(NOT PEBBLETON_SANITIZERS)
    # What cppcheck is told not to say:
    #   missingIncludeSystem    it is not shown the system's headers
    #   useStlAlgorithm         a loop that changes what it visits is clearer as a loop
    set(stamp ${CMAKE_CURRENT_BINARY_DIR}/lint/cppcheck)
    add_custom_command(OUTPUT ${stamp}
        COMMAND ${CPPCHECK} --quiet --std=c++17 --language=c++ --enable=warning,style,performance,portability
            --inline-suppr --error-exitcode=1 -I bench -I include -I src --suppress=missingIncludeSystem
            --suppress=useStlAlgorithm bench src include tools
        COMMAND ${CMAKE_COMMAND} -E touch ${stamp}
        DEPENDS ${lintSources} ${lintHeaders}
        WORKING_DIRECTORY ${CMAKE_CURRENT_SOURCE_DIR}
        COMMENT "cppcheck" VERBATIM)
    list(APPEND lintStamps ${stamp})
endif()

file(MAKE_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR}/lint)
add_custom_target(lint ALL DEPENDS ${lintStamps})
