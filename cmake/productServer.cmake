# Where the version check asks and what its messages point to: the maker's product-attribute server, the
# support address and the download page. Build settings, so that a staging build needs no code change;
# QWZ_PRODUCT_SERVER overrides the server at run time.
set(QUILLON_PRODUCT_HOST "www.tarvik.com" CACHE STRING "host of the product-attribute server (HTTPS, port 443)")
set(QUILLON_SUPPORT_EMAIL "support@tarvik.com" CACHE STRING "address that a too-new installation is told to write to")
set(QUILLON_DOWNLOAD_PAGE "https://www.tarvik.com/downloads/" CACHE STRING "page that an outdated installation is sent to")

file(CONFIGURE OUTPUT ${QUILLON_GEN}/productServer.h
     CONTENT "// Generated at configure time from the QUILLON_PRODUCT_HOST, QUILLON_SUPPORT_EMAIL and QUILLON_DOWNLOAD_PAGE settings.
#pragma once
#define QWZ_PRODUCT_HOST \"${QUILLON_PRODUCT_HOST}\"
#define QWZ_SUPPORT_EMAIL \"${QUILLON_SUPPORT_EMAIL}\"
#define QWZ_DOWNLOAD_PAGE \"${QUILLON_DOWNLOAD_PAGE}\"
")

# The table that `make run` serves: this build's own version, so that the start-up check passes quietly.
# the version record's version and build number run together: the key the server compares
string(REPLACE "." "" QUILLON_VERSION_KEY "${QUILLON_VERSION}${QUILLON_BUILD_NUMBER}")
file(CONFIGURE OUTPUT ${CMAKE_BINARY_DIR}/run-products.txt
     CONTENT "# product attribute value: what the local product-attribute server answers for `make run`
Quillon version ${QUILLON_VERSION_KEY}
Quillon version_string ${QUILLON_VERSION}${QUILLON_BUILD_NUMBER}
")
