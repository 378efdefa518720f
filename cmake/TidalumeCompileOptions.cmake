# Compile options that all of the project's targets share.

set(CMAKE_CXX_STANDARD 17)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)

# Warnings, and the sanitizers where they are asked for.
function(tidalume_options target)
  target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic)
  if(TIDALUME_WARNINGS_AS_ERRORS)
    target_compile_options(${target} PRIVATE -Werror)
  endif()
  if(TIDALUME_SANITIZE STREQUAL "thread")
    target_compile_options(${target} PRIVATE -fsanitize=thread)
    target_link_options(${target} PUBLIC -fsanitize=thread)
  elseif(TIDALUME_SANITIZE)
    # vptr checks need RTTI, which the library does without.
    target_compile_options(${target} PRIVATE
      -fsanitize=address,undefined,float-cast-overflow -fno-sanitize=vptr
      -fno-sanitize-recover=undefined,float-cast-overflow -fno-omit-frame-pointer)
    target_link_options(${target} PUBLIC -fsanitize=address,undefined)
  endif()
  if(TIDALUME_FUZZ)
    target_compile_options(${target} PRIVATE -fsanitize=fuzzer-no-link)
  endif()
endfunction()

# Code that goes into the library itself: no exceptions, no RTTI, and floating point that gives the same bits on every
# processor (no fused multiply-add, no reassociation).
function(tidalume_library_options target)
  tidalume_options(${target})
  target_compile_options(${target} PRIVATE
    -fno-exceptions -fno-rtti -ffp-contract=off -fno-math-errno -fvisibility-inlines-hidden)
  if(NOT EMSCRIPTEN) # which knows no interposition
    target_compile_options(${target} PRIVATE -fno-semantic-interposition)
  endif()
endfunction()
