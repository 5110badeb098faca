# The file-name suffix of a per-ISA source picks its instruction-set flags from this table.
# Nothing else is compiled with ISA flags, so baseline code never picks up an instruction
# that a lower processor class lacks.
set(FRAMEKIT_ISA_FLAGS_sse2 "")
set(FRAMEKIT_ISA_FLAGS_ssse3 "-mssse3")
set(FRAMEKIT_ISA_FLAGS_sse41 "-msse4.1")
set(FRAMEKIT_ISA_FLAGS_avx "-mavx")
set(FRAMEKIT_ISA_FLAGS_avx2 "-mavx2;-mfma;-mbmi;-mbmi2")
set(FRAMEKIT_ISAS sse2 ssse3 sse41 avx avx2)

if(CMAKE_SYSTEM_PROCESSOR MATCHES "^(x86_64|AMD64|amd64|x64)$")
  set(FRAMEKIT_X86 ON)
else()
  set(FRAMEKIT_X86 OFF)
endif()

foreach(flag_var CMAKE_C_FLAGS CMAKE_CXX_FLAGS)
  if("${${flag_var}}" MATCHES "(^| )-m(arch|avx|sse|fma|bmi)")
    message(FATAL_ERROR "${flag_var} carries global ISA flags ('${${flag_var}}'); "
                        "per-ISA code gets its flags from its file suffix only")
  endif()
endforeach()

# Every file: no contraction of a*b+c into FMA, so float results do not depend on the ISA.
add_compile_options(-ffp-contract=off)

# Splits SOURCES into baseline files and per-ISA files; per-ISA files get their flags here.
# On other processors the per-ISA files are dropped and every table uses the reference.
function(framekit_isa_sources out_var)
  set(kept "")
  foreach(src IN LISTS ARGN)
    get_filename_component(stem "${src}" NAME_WE)
    set(isa_of_file "")
    foreach(isa IN LISTS FRAMEKIT_ISAS)
      if(stem MATCHES "_${isa}$")
        set(isa_of_file ${isa})
      endif()
    endforeach()
    if(isa_of_file)
      if(FRAMEKIT_X86)
        set_source_files_properties(${src} PROPERTIES
          COMPILE_OPTIONS "${FRAMEKIT_ISA_FLAGS_${isa_of_file}}")
        list(APPEND kept ${src})
      endif()
    else()
      list(APPEND kept ${src})
    endif()
  endforeach()
  set(${out_var} ${kept} PARENT_SCOPE)
endfunction()
