# Turns one manual page written in scdoc into roff.
#   cmake -DSCDOC=scdoc -DENTRADA=page.1.scd -DSAIDA=page.1 -P Manual.cmake
execute_process(COMMAND ${SCDOC} INPUT_FILE ${ENTRADA} OUTPUT_VARIABLE pagina
  ERROR_VARIABLE erro RESULT_VARIABLE resultado)
if(NOT resultado EQUAL 0)
  message(FATAL_ERROR "${ENTRADA}: ${erro}")
endif()
# The pages are Portuguese and groff's hyphenation patterns English: words are never split.
string(REGEX REPLACE "(\n\\.TH [^\n]*\n)" "\\1.nh\n" pagina "${pagina}")
file(WRITE ${SAIDA} "${pagina}")
