# Compiler and linker settings that the program, its library and the tests share.
add_library(pebbleton-flags INTERFACE)

target_compile_options(pebbleton-flags INTERFACE
    -Wall -Wextra -Wpedantic -Wconversion -Wshadow
    # The log names source files as the source tree does, wherever it was built.
    -fmacro-prefix-map=${CMAKE_CURRENT_SOURCE_DIR}/=)
if(PEBBLETON_WERROR)
    target_compile_options(pebbleton-flags INTERFACE -Werror)
endif()

# Only libraries that are called are loaded at start.
target_link_options(pebbleton-flags INTERFACE -Wl,--as-needed)

if(PEBBLETON_SANITIZERS)
    set(sanitize -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_compile_options(pebbleton-flags INTERFACE ${sanitize})
    target_link_options(pebbleton-flags INTERFACE ${sanitize})
endif()
