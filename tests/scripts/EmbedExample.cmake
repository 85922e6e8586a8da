# The install as another program meets it: installed into a fresh prefix, the embedding example built
# against its CMake package and run, and the installed program run on the first example.
# Takes BUILD (the build tree), SOURCE, WORK (a folder of its own), GENERATOR and FLAGS (the build's
# sanitizer flags, which a program linking instrumented libraries needs too).
function(run what)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE status OUTPUT_VARIABLE out ERROR_VARIABLE err)
  if(NOT status EQUAL 0)
    message(FATAL_ERROR "${what} failed (${status}):\n${out}\n${err}")
  endif()
  set(out "${out}" PARENT_SCOPE)
endfunction()

file(REMOVE_RECURSE ${WORK})
set(prefix ${WORK}/prefix)
run("the install" ${CMAKE_COMMAND} --install ${BUILD} --prefix ${prefix})
run("configuring the example" ${CMAKE_COMMAND} -S ${SOURCE}/examples/embed -B ${WORK}/build -G ${GENERATOR}
  -DCMAKE_PREFIX_PATH=${prefix} "-DCMAKE_CXX_FLAGS=${FLAGS}" -DCMAKE_BUILD_TYPE=RelWithDebInfo)
run("building the example" ${CMAKE_COMMAND} --build ${WORK}/build)

run("the example" ${WORK}/build/embed ${WORK}/form.png)
file(READ ${SOURCE}/examples/embed/embed.out expected)
if(NOT out STREQUAL "${expected}wrote ${WORK}/form.png\n")
  message(FATAL_ERROR "the example printed:\n${out}\nexpected:\n${expected}wrote ${WORK}/form.png")
endif()
if(NOT EXISTS ${WORK}/form.png)
  message(FATAL_ERROR "the example wrote no form.png")
endif()

# The installed program finds its module and the platform library from where the install put them.
run("the installed program" ${prefix}/bin/quillon run ${SOURCE}/examples/first_script.js)
file(READ ${SOURCE}/examples/first_script.out expected)
if(NOT out STREQUAL expected)
  message(FATAL_ERROR "the installed program printed:\n${out}\nexpected:\n${expected}")
endif()
