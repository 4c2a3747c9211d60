# Fails when a source file has more than 400 lines: it holds more than one idea.

cmake_minimum_required(VERSION 3.25)

file(GLOB_RECURSE sources "${ROOT}/app/*" "${ROOT}/pictures/*"
  "${ROOT}/bench/*" "${ROOT}/drivers/*" "${ROOT}/enhance/*" "${ROOT}/filter/*" "${ROOT}/fuzz/*"
  "${ROOT}/image/*" "${ROOT}/models/*"
  "${ROOT}/printer/*" "${ROOT}/scripts/*" "${ROOT}/tests/*" "${ROOT}/fitter/*"
  "${ROOT}/packaging/*" "${ROOT}/examples/*" "${ROOT}/preview/*" "${ROOT}/tools/*")
# A catalogue is a list.
list(FILTER sources EXCLUDE REGEX "\\.po$")
set(checked 0)
foreach(source IN LISTS sources)
  file(READ "${source}" text)
  string(REGEX REPLACE "[^\n]" "" newlines "${text}")
  string(LENGTH "${newlines}" length)
  math(EXPR checked "${checked} + 1")
  if(length GREATER 400)
    file(RELATIVE_PATH shown "${ROOT}" "${source}")
    message(SEND_ERROR "${shown} has ${length} lines")
  endif()
endforeach()
if(checked LESS 60)
  message(FATAL_ERROR "only ${checked} files found below ${ROOT}")
endif()
