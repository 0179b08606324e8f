# keld_target_defaults(<target>): what every target of this project is compiled with.
#
# Floating-point contraction is off everywhere: scaling a position is three separate rounding
# steps, and a fused multiply-add would give other last bits.
#
# g++ 12 takes std::string's operator+ for an overlapping copy when it optimises: -Wrestrict is off.
function(keld_target_defaults target)
  set_target_properties(${target} PROPERTIES
    CXX_STANDARD 20
    CXX_STANDARD_REQUIRED ON
    CXX_EXTENSIONS OFF
    CXX_VISIBILITY_PRESET hidden
    VISIBILITY_INLINES_HIDDEN ON)
  target_compile_options(${target} PRIVATE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wnon-virtual-dtor
    -Wold-style-cast -Woverloaded-virtual -Wcast-align -Wformat=2 -Werror
    $<$<AND:$<CXX_COMPILER_ID:GNU>,$<CONFIG:Release>>:-Wno-restrict>
    -ffp-contract=off
    -fno-semantic-interposition)
  if(KELD_SANITIZE)
    target_compile_options(${target} PRIVATE
      -fsanitize=${KELD_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(${target} PRIVATE -fsanitize=${KELD_SANITIZE})
  endif()
endfunction()

# keld_precompile_if_sanitized(<target> <header>...): has these headers parsed once for the whole
# target, in the builds with sanitizers, which are the second ones of the same sources. The first
# ones see to it that each source includes what it needs.
function(keld_precompile_if_sanitized target)
  if(KELD_SANITIZE)
    target_precompile_headers(${target} PRIVATE ${ARGN})
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
      target_compile_options(${target} PRIVATE -fpch-preprocess) # for ccache
    endif()
  endif()
endfunction()
