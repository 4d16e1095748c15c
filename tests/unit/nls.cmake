# Catalogs for the catalog library's tests, compiled by msgfmt from tests/unit/data/nls: the German
# catalog in both byte orders, with and without a hash table, a British English one that exists only
# under the bare language name, and a German one whose translations read other printf arguments than
# their English texts, compiled without the format check as a careless translator's would be.
find_program(MSGFMT msgfmt REQUIRED)
set(nls_po ${CMAKE_CURRENT_LIST_DIR}/data/nls)
set(nls_out ${QUILLON_TEST_DATA}/nls)
set(nls_catalogs)

function(nls_catalog po variant language)
    cmake_parse_arguments(C "UNCHECKED" "" "" ${ARGN})
    set(check --check-format)
    if(C_UNCHECKED)
        set(check)
    endif()
    set(out ${nls_out}/${variant}/${language}/LC_MESSAGES/quillon.mo)
    add_custom_command(OUTPUT ${out}
        COMMAND ${CMAKE_COMMAND} -E make_directory ${nls_out}/${variant}/${language}/LC_MESSAGES
        COMMAND ${MSGFMT} ${check} ${C_UNPARSED_ARGUMENTS} -o ${out} ${nls_po}/${po}
        DEPENDS ${nls_po}/${po}
        COMMENT "msgfmt ${po} -> nls/${variant}")
    set(nls_catalogs ${nls_catalogs} ${out} PARENT_SCOPE)
endfunction()

nls_catalog(German.po little German)
nls_catalog(German.po big German --endianness=big)
nls_catalog(German.po little-nohash German --no-hash)
nls_catalog(German.po big-nohash German --endianness=big --no-hash)
nls_catalog(English.po fallback English)
nls_catalog(Formats.po formats German UNCHECKED)

# the source of the German catalog, so that tests compare against what msgfmt was given
add_custom_command(OUTPUT ${nls_out}/German.po
    COMMAND ${CMAKE_COMMAND} -E copy ${nls_po}/German.po ${nls_out}/German.po
    DEPENDS ${nls_po}/German.po)
list(APPEND nls_catalogs ${nls_out}/German.po)

add_custom_target(nls_test_catalogs DEPENDS ${nls_catalogs})
add_dependencies(test_data nls_test_catalogs)
