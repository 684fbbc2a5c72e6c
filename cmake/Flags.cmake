# Compiler and linker settings that the program, its library and the tests share.
include(CheckPIESupported)
check_pie_supported()
set(CMAKE_POSITION_INDEPENDENT_CODE ON)

add_library(pebbleton-flags INTERFACE)

target_compile_options(pebbleton-flags INTERFACE
    -Wall -Wextra -Wpedantic -Wconversion -Wshadow
    # The log names source files as the source tree does, wherever it was built.
    -fmacro-prefix-map=${CMAKE_CURRENT_SOURCE_DIR}/=
    -fstack-protector-strong)
if(PEBBLETON_WERROR)
    target_compile_options(pebbleton-flags INTERFACE -Werror)
endif()

target_link_options(pebbleton-flags INTERFACE
    -Wl,--as-needed # only libraries that are called are loaded at start
    -Wl,-z,relro,-z,now,-z,noexecstack)

if(PEBBLETON_SANITIZERS)
    # Fortified calls would hide from the sanitizers what they are there to see.
    set(sanitize -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
    if(CMAKE_CXX_COMPILER_ID STREQUAL Clang)
        list(APPEND sanitize -fsanitize=fuzzer-no-link) # coverage, by which a fuzzer finds its way
    endif()
    target_compile_options(pebbleton-flags INTERFACE ${sanitize})
    target_link_options(pebbleton-flags INTERFACE ${sanitize})
else()
    # It needs an optimizer. A distribution's own level, given from outside, is replaced, not redefined.
    target_compile_options(pebbleton-flags INTERFACE $<$<NOT:$<CONFIG:Debug>>:-U_FORTIFY_SOURCE;-D_FORTIFY_SOURCE=2>)
endif()
