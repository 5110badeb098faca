# Runs the framekit program and checks what it does, from the outside.
#   -DMODE=gallery  `framekit demo DIR` succeeds; DIR/index.html refers only to BMP files that
#                   exist; every picture export of the library appears in the gallery.
#   -DMODE=usage    bad command lines give the usage text and exit status 2; --help gives 0;
#                   a directory that cannot be created gives 1.
# -DPROGRAM=<program> -DEMULATOR=<emulator, '|'-separated, or empty> -DEXPORTS=<names, '|'>
# Runs in the test's working directory; relative paths keep the same meaning under Wine.
cmake_minimum_required(VERSION 3.25)
string(REPLACE "|" ";" emulator "${EMULATOR}")
string(REPLACE "|" ";" exports "${EXPORTS}")

# Runs the program with the given arguments and requires the exit status; the output is left in
# run_out and run_err.
function(run_program expected)
  execute_process(COMMAND ${emulator} ${PROGRAM} ${ARGN} RESULT_VARIABLE code
                  OUTPUT_VARIABLE out ERROR_VARIABLE err)
  if(NOT code STREQUAL "${expected}")
    message(FATAL_ERROR "framekit ${ARGN}: exit status ${code}, expected ${expected}\n"
                        "stdout:\n${out}\nstderr:\n${err}")
  endif()
  set(run_out "${out}" PARENT_SCOPE)
  set(run_err "${err}" PARENT_SCOPE)
endfunction()

function(require_usage_on stream text)
  if(NOT text MATCHES "usage: framekit demo")
    message(FATAL_ERROR "no usage text on ${stream}:\n${text}")
  endif()
endfunction()

# Names that have no picture to show: the twin of Init, and the savers, which save every card.
set(not_pictures KXDInit SaveImageRGB24 SaveImageRGB32)

# Little-endian unsigned integer of `size` bytes at `offset` of a file.
function(read_le file offset size out)
  file(READ "${file}" hex OFFSET ${offset} LIMIT ${size} HEX)
  set(value "")
  math(EXPR last "2 * ${size} - 2")
  foreach(i RANGE 0 ${last} 2)
    string(SUBSTRING "${hex}" ${i} 2 byte)
    string(PREPEND value "${byte}")
  endforeach()
  math(EXPR value "0x${value}")
  set(${out} ${value} PARENT_SCOPE)
endfunction()

# The colour of the pixel at column x, row y from the top of a BMP, as RRGGBB in hex.
function(bmp_pixel file x y out)
  read_le("${file}" 10 4 pixels)
  read_le("${file}" 18 4 width)
  read_le("${file}" 22 4 height)
  read_le("${file}" 28 2 bits)
  if(height GREATER_EQUAL 2147483648)  # negative: stored top row first
    math(EXPR row "${y}")
  else()
    math(EXPR row "${height} - 1 - ${y}")
  endif()
  math(EXPR at "${pixels} + ${row} * ((${width} * ${bits} + 31) / 32 * 4) + ${x} * ${bits} / 8")
  file(READ "${file}" bgr OFFSET ${at} LIMIT 3 HEX)
  string(REGEX REPLACE "^(..)(..)(..)$" "\\3\\2\\1" rgb "${bgr}")
  set(${out} ${rgb} PARENT_SCOPE)
endfunction()

# The red and blue colour bars of the 640x360 picture (columns 400-479 and 480-559, rows 20-139)
# seen where each picture should show them: a mistake in orientation or byte order shows here.
function(check_colours dir)
  foreach(check "00_original 440 60 ff0000" "00_original 520 60 0000ff"
                "01_FlipHorizontalRGB24 440 299 ff0000" "02_FlipVerticalRGB24 199 60 ff0000"
                "02_FlipVerticalRGB24 119 60 0000ff")
    separate_arguments(check)
    list(GET check 0 name)
    list(GET check 1 x)
    list(GET check 2 y)
    list(GET check 3 expected)
    bmp_pixel("${dir}/${name}.bmp" ${x} ${y} rgb)
    if(NOT rgb STREQUAL expected)
      message(FATAL_ERROR "${name}.bmp at (${x}, ${y}) is ${rgb}, expected ${expected}")
    endif()
  endforeach()
endfunction()

function(check_gallery dir)
  file(REMOVE_RECURSE "${dir}")
  run_program(0 demo "${dir}")
  if(NOT run_out MATCHES "index\\.html")
    message(FATAL_ERROR "the path of index.html is not printed:\n${run_out}")
  endif()
  if(NOT EXISTS "${dir}/index.html")
    message(FATAL_ERROR "${dir}/index.html is missing")
  endif()
  file(READ "${dir}/index.html" html)
  string(REGEX MATCHALL "src=\"[^\"]+\"" refs "${html}")
  list(LENGTH refs count)
  if(count LESS 2)
    message(FATAL_ERROR "index.html shows ${count} pictures")
  endif()
  foreach(ref IN LISTS refs)
    string(REGEX REPLACE "^src=\"(.*)\"$" "\\1" name "${ref}")
    if(NOT name MATCHES "^[0-9][0-9]+_[A-Za-z0-9_]+\\.bmp$" OR NOT EXISTS "${dir}/${name}")
      message(FATAL_ERROR "index.html refers to ${name}, which is not a saved picture")
    endif()
    file(READ "${dir}/${name}" magic LIMIT 2 HEX)
    if(NOT magic STREQUAL "424d")
      message(FATAL_ERROR "${name} does not start with BM")
    endif()
  endforeach()
  foreach(name IN LISTS exports)
    if(NOT name IN_LIST not_pictures AND NOT html MATCHES "[> (]${name}[< (]")
      message(FATAL_ERROR "the gallery does not show ${name}: add a step for it")
    endif()
  endforeach()
  check_colours("${dir}")
endfunction()

if(MODE STREQUAL "gallery")
  check_gallery("gallery")
  # A non-ASCII directory checks the UTF-8 to UTF-16 file names on the way to the savers (and,
  # under Wine, the wide command line; the test runs in a UTF-8 locale for that).
  check_gallery("gallery-été")
elseif(MODE STREQUAL "usage")
  run_program(2)
  require_usage_on(stderr "${run_err}")
  run_program(2 paint)
  require_usage_on(stderr "${run_err}")
  run_program(2 demo one two)
  require_usage_on(stderr "${run_err}")
  run_program(0 --help)
  require_usage_on(stdout "${run_out}")
  file(WRITE "not-a-directory" "")
  run_program(1 demo "not-a-directory/gallery")
  if(NOT run_err MATCHES "cannot create")
    message(FATAL_ERROR "no message for a directory that cannot be created:\n${run_err}")
  endif()
else()
  message(FATAL_ERROR "unknown MODE ${MODE}")
endif()
