# Fails when a per-ISA object defines any symbol the linker could share with other objects,
# other than the variant bodies of its own level.
#
# An inline function with external linkage (a <cmath> wrapper, a shared helper, a template) that
# a per-ISA file calls is emitted there as a weak or comdat copy compiled with that file's flags;
# the linker keeps one copy for the whole library, and if it keeps that one, baseline code runs
# instructions its class may lack. So a per-ISA object may define, as global symbols, only the
# functions of its own namespace framekit::prim::<isa>; everything else must be local.
#
#   cmake -DNM=<nm> -DOBJECT_LIST=<file naming one object a line> -P check_isa_symbols.cmake
# Objects whose source is not per-ISA are skipped. Two kinds of shared data that hold an address
# and no code are allowed: MinGW's .refptr.* entries and the unwinder's DW.ref.* pointer to the
# C++ runtime's personality routine (instrumented builds emit it for cleanups).
file(STRINGS "${OBJECT_LIST}" OBJECTS)
set(isas sse2 ssse3 sse41 avx avx2)
set(problems "")
set(checked 0)
foreach(object IN LISTS OBJECTS)
  get_filename_component(name "${object}" NAME)
  set(isa "")
  foreach(candidate IN LISTS isas)
    if(name MATCHES "_${candidate}\\.(cpp|cc)\\.(o|obj)$")
      set(isa ${candidate})
    endif()
  endforeach()
  if(NOT isa)
    continue()
  endif()
  math(EXPR checked "${checked} + 1")
  execute_process(COMMAND "${NM}" -C --defined-only "${object}" OUTPUT_VARIABLE listing
                  RESULT_VARIABLE status ERROR_VARIABLE error)
  if(NOT status EQUAL 0)
    message(FATAL_ERROR "${NM} failed on ${object}: ${error}")
  endif()
  string(REPLACE "\n" ";" lines "${listing}")
  foreach(line IN LISTS lines)
    if(NOT line MATCHES "^[0-9a-fA-F]* +([A-Za-z]) (.*)$")
      continue()
    endif()
    set(type "${CMAKE_MATCH_1}")
    set(symbol "${CMAKE_MATCH_2}")
    if(symbol MATCHES "^(\\.refptr\\.|DW\\.ref\\.)")
      continue()
    endif()
    if(type MATCHES "^[WwVvuiI]$")
      string(APPEND problems "\n  ${name}: weak or unique symbol (${type}) ${symbol}")
    elseif(type MATCHES "^[A-Z]$" AND NOT symbol MATCHES "^framekit::prim::${isa}::")
      string(APPEND problems "\n  ${name}: global symbol (${type}) ${symbol}")
    endif()
  endforeach()
endforeach()
if(checked EQUAL 0)
  message(FATAL_ERROR "no per-ISA object among the objects given")
endif()
if(problems)
  message(FATAL_ERROR "per-ISA objects define symbols that other objects could use:${problems}\n"
                      "Give the helpers internal linkage (static, an anonymous namespace, or the "
                      "level's namespace) and use builtins instead of library inline functions.")
endif()
message(STATUS "ISA symbol check: ${checked} per-ISA objects define only their variant bodies")
