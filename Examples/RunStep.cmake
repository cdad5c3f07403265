# Runs one step of the ladder and fails unless it exits with 0 and prints what stands in its .expected file.
#
#   cmake -D PROGRAM=… -D EXPECTED=… -P RunStep.cmake
#
# Without such a file only the exit code counts. What the program writes to standard error passes through.
cmake_minimum_required(VERSION 3.25)

cmake_path(GET PROGRAM FILENAME name)
execute_process(COMMAND ${PROGRAM} OUTPUT_VARIABLE printed RESULT_VARIABLE result)
if(NOT result STREQUAL "0")
    message(FATAL_ERROR "${name} ended with ${result}, having printed:\n${printed}")
endif()

if(EXISTS ${EXPECTED})
    file(READ ${EXPECTED} expected)
    if(NOT printed STREQUAL expected)
        message(FATAL_ERROR "${name} printed:\n${printed}instead of:\n${expected}")
    endif()
endif()
