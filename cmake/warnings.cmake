# Warnings are errors everywhere in our own code.
set(FRAMEKIT_WARNINGS -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wno-sign-conversion
    -Wcast-align -Wnon-virtual-dtor -Wundef -Werror)

function(framekit_warnings target)
  target_compile_options(${target} PRIVATE
    $<$<COMPILE_LANGUAGE:CXX>:${FRAMEKIT_WARNINGS}>
    $<$<COMPILE_LANGUAGE:C>:-Wall -Wextra -Werror>)
endfunction()
