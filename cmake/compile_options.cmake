# Options for every target of this tree, and the stricter ones of the daemon.

add_library(panel_options INTERFACE)
target_include_directories(panel_options INTERFACE ${CMAKE_SOURCE_DIR})
# -Wrestrict of GCC 12 warns of its own std::string.
target_compile_options(panel_options INTERFACE -Wall -Wextra -Wshadow -Wconversion -Wno-sign-conversion
                       $<$<COMPILE_LANG_AND_ID:CXX,GNU>:-Wno-restrict>)
if(PANEL_WERROR)
  target_compile_options(panel_options INTERFACE -Werror)
endif()
if(PANEL_SANITIZE)
  # Clang's build fuzzes for hours, GCC's is built in each check.
  target_compile_options(panel_options INTERFACE -fsanitize=address,undefined -fno-sanitize-recover=all
                         -fno-omit-frame-pointer -O$<IF:$<CXX_COMPILER_ID:Clang>,2,1> -g1)
  target_link_options(panel_options INTERFACE -fsanitize=address,undefined)
endif()

# The daemon runs on a router that has no C++ library: nothing may need one at run time.
add_library(daemon_options INTERFACE)
target_link_libraries(daemon_options INTERFACE panel_options)
target_compile_options(daemon_options INTERFACE
  $<$<COMPILE_LANGUAGE:CXX>:-fno-exceptions -fno-rtti -fno-threadsafe-statics>
  $<$<CONFIG:Release>:-Os> -ffunction-sections -fdata-sections)

# panel_daemon(NAME PLATFORM): the daemon on one of its platforms. The C linker driver keeps the C++ library out:
# code that needs it does not link.
function(panel_daemon name platform)
  add_executable(${name} ${CMAKE_SOURCE_DIR}/core/main.cpp)
  target_link_libraries(${name} PRIVATE panel_core ${platform} daemon_options)
  target_link_options(${name} PRIVATE -Wl,--gc-sections)
  set_target_properties(${name} PROPERTIES LINKER_LANGUAGE C)
endfunction()
