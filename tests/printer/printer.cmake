# A real printer for the printing tests: a private CUPS scheduler with a cups-pdf queue, started before
# the tests that need it and stopped after them (a CTest fixture), its socket, spool and PDFs in the
# build folder. The Windows programs find it through CUPS_SERVER, as Wine's spooler reads it.
if(WIN32)
    set(QUILLON_CUPS_DIR ${CMAKE_BINARY_DIR}/cups)
    add_test(NAME printer_start COMMAND bash ${CMAKE_CURRENT_LIST_DIR}/cupsd.sh start ${QUILLON_CUPS_DIR})
    add_test(NAME printer_stop COMMAND bash ${CMAKE_CURRENT_LIST_DIR}/cupsd.sh stop ${QUILLON_CUPS_DIR})
    set_tests_properties(printer_start PROPERTIES FIXTURES_SETUP printer TIMEOUT 60)
    set_tests_properties(printer_stop PROPERTIES FIXTURES_CLEANUP printer TIMEOUT 60)
    foreach(t win_tests e2e_test_print e2e_test_dialogs)
        if(TEST ${t})
            set_property(TEST ${t} APPEND PROPERTY FIXTURES_REQUIRED printer)
            set_property(TEST ${t} APPEND PROPERTY ENVIRONMENT
                "CUPS_SERVER=${QUILLON_CUPS_DIR}/cups.sock;QUILLON_PDF_DIR=${QUILLON_CUPS_DIR}/pdf")
        endif()
    endforeach()
endif()
