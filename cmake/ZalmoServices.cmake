# Addresses of services and pages outside the program. They are the deployer's to set; what has none is not offered.

set(ZALMO_SUPPORT_PAGE "" CACHE STRING "Contact support")
set(ZALMO_EXTENSIONS_PAGE "" CACHE STRING "Browser extensions")
set(ZALMO_API_ERROR_ARTICLE "" CACHE STRING "Help on XML-RPC errors")
set(ZALMO_NO_WORDPRESS_ARTICLE "" CACHE STRING "Help on addresses that are no WordPress blog")
set(ZALMO_TELEMETRY_COLLECTOR "" CACHE STRING "Where events go; empty: nowhere")

configure_file(${PROJECT_SOURCE_DIR}/cmake/ZalmoServices.h.in ${PROJECT_BINARY_DIR}/generated/ZalmoServices.h)
include_directories(${PROJECT_BINARY_DIR}/generated)
