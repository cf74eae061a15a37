# cmake -S . -B FOLDER -DCMAKE_TOOLCHAIN_FILE=cmake/musl.cmake -DPANEL_MUSL_CPU=mips -DPANEL_MUSL=PREFIX -DPANEL_TESTS=OFF
#
# Programs linked statically against the musl whose include and lib are below PREFIX. Debian's GCC is configured for the
# GNU library: its C++ headers are used, with musl's C headers in place of its own; its C++ library cannot be.

set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR ${PANEL_MUSL_CPU})
set(CMAKE_TRY_COMPILE_PLATFORM_VARIABLES PANEL_MUSL_CPU PANEL_MUSL)
set(PANEL_STATIC ON)

set(CMAKE_C_COMPILER ${PANEL_MUSL_CPU}-linux-gnu-gcc)
set(CMAKE_CXX_COMPILER ${PANEL_MUSL_CPU}-linux-gnu-g++)

function(print_name variable)
  execute_process(COMMAND ${CMAKE_C_COMPILER} ${ARGN} OUTPUT_VARIABLE name OUTPUT_STRIP_TRAILING_WHITESPACE)
  set(${variable} ${name} PARENT_SCOPE)
endfunction()
print_name(gcc_headers -print-file-name=include)
print_name(gcc_library -print-libgcc-file-name)
execute_process(COMMAND ${CMAKE_CXX_COMPILER} -E -x c++ -v /dev/null OUTPUT_QUIET ERROR_VARIABLE search_list)
string(REGEX MATCHALL "\n [^\n]*/c\\+\\+/[^\n]*" cxx_headers "${search_list}")
string(REGEX REPLACE "[;]?\n " " -isystem " cxx_headers "${cxx_headers}")

set(c_headers "-isystem ${PANEL_MUSL}/include -isystem ${gcc_headers} -include ${CMAKE_CURRENT_LIST_DIR}/musl_prelude.h")
# The kernel's headers.
if(PANEL_MUSL_CPU STREQUAL CMAKE_HOST_SYSTEM_PROCESSOR)
  string(APPEND c_headers " -idirafter /usr/include/${PANEL_MUSL_CPU}-linux-gnu -idirafter /usr/include")
else()
  string(APPEND c_headers " -idirafter /usr/${PANEL_MUSL_CPU}-linux-gnu/include")
endif()
set(CMAKE_C_FLAGS_INIT "-nostdinc ${c_headers}")
set(CMAKE_CXX_FLAGS_INIT "-nostdinc ${cxx_headers} ${c_headers}")

set(lib ${PANEL_MUSL}/lib)
set(CMAKE_EXE_LINKER_FLAGS_INIT "-nostdlib -static -no-pie ${lib}/crt1.o ${lib}/crti.o")
set(CMAKE_C_STANDARD_LIBRARIES "${lib}/libc.a ${gcc_library} ${lib}/crtn.o")
set(CMAKE_CXX_STANDARD_LIBRARIES "${CMAKE_C_STANDARD_LIBRARIES}")
