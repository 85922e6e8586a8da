# The README and the script reference show examples/first_script.js in full, as it is: the README as
# an indented block, the reference in a fenced one.
file(READ ${SOURCE}/examples/first_script.js script)
file(READ ${SOURCE}/README.md readme)
file(READ ${SOURCE}/docs/scripting.md reference)
string(REGEX REPLACE "\n([^\n])" "\n    \\1" indented "    ${script}")
string(FIND "${readme}" "${indented}" inReadme)
string(FIND "${reference}" "```js\n${script}```" inReference)
if(inReadme EQUAL -1)
  message(FATAL_ERROR "README.md does not show examples/first_script.js as it is")
endif()
if(inReference EQUAL -1)
  message(FATAL_ERROR "docs/scripting.md does not show examples/first_script.js as it is")
endif()
