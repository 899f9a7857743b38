# vosk_child_program(<variable> <target>): sets <variable> to the path by
# which a test starts <target>'s program as a child process (a generator
# expression, for target_compile_definitions or add_test).
#
# Normally that is the program itself. In a cross build whose tests run under
# an emulator (CMAKE_CROSSCOMPILING_EMULATOR, e.g. qemu-aarch64 on x86-64),
# CTest starts each test program through the emulator, but a program the test
# starts in turn would be handed to the kernel as it is, and without
# binfmt_misc the kernel cannot run a foreign binary. The path is then a
# launcher script, <build>/emulated/<target>, that runs the program under the
# same emulator; whatever the child starts is given such a launcher too (the
# upgrader, for the wrapper). Only emulated runs use these launchers.
function(vosk_child_program variable target)
  if(NOT (CMAKE_CROSSCOMPILING AND CMAKE_CROSSCOMPILING_EMULATOR))
    set(${variable} "$<TARGET_FILE:${target}>" PARENT_SCOPE)
    return()
  endif()
  set(launcher "${CMAKE_BINARY_DIR}/emulated/${target}")
  set(${variable} "${launcher}" PARENT_SCOPE)
  get_property(generated GLOBAL PROPERTY VOSK_EMULATED_LAUNCHERS)
  if(target IN_LIST generated)
    return()
  endif()
  set_property(GLOBAL APPEND PROPERTY VOSK_EMULATED_LAUNCHERS ${target})
  set(command "")
  foreach(word IN LISTS CMAKE_CROSSCOMPILING_EMULATOR)
    string(REPLACE "'" "'\\''" word "${word}")
    string(APPEND command " '${word}'")
  endforeach()
  file(GENERATE OUTPUT "${launcher}"
       CONTENT "#!/bin/sh\n# ${target} under the emulator of this cross build (see cmake/ChildPrograms.cmake).\nexec${command} '$<TARGET_FILE:${target}>' \"$@\"\n"
       FILE_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
endfunction()
