# Addresses of services and pages outside the program. They are the deployer's to set.

set(ZALMO_FAVICON_SERVICE "https://icons.duckduckgo.com/ip3" CACHE STRING "Favicon look-up: its address, then /, then the blog's address")
set(ZALMO_SUPPORT_PAGE "https://example.com/zalmo/support" CACHE STRING "Contact support")
set(ZALMO_EXTENSIONS_PAGE "https://example.com/zalmo/extensions" CACHE STRING "Browser extensions")
set(ZALMO_API_ERROR_ARTICLE "https://example.com/zalmo/support/xml-rpc" CACHE STRING "Help on XML-RPC errors")
set(ZALMO_NO_WORDPRESS_ARTICLE "https://example.com/zalmo/support/not-wordpress" CACHE STRING "Help on addresses that are no WordPress blog")
set(ZALMO_TELEMETRY_COLLECTOR "" CACHE STRING "Where events go; empty: nowhere")

configure_file(${PROJECT_SOURCE_DIR}/cmake/ZalmoServices.h.in ${PROJECT_BINARY_DIR}/generated/ZalmoServices.h)
include_directories(${PROJECT_BINARY_DIR}/generated)
