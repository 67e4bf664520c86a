# The icons: what the code calls them, and which drawing of the icon set stands for each. They are compiled in under
# :/icons/<name>.svg.

set(ZALMO_ICON_SET ${PROJECT_SOURCE_DIR}/node_modules/lucide-static/icons)

set(ZALMO_ICONS
    # rows of the post list
    "postlist_published_icon          circle-check"
    "postlist_draft_icon              pencil-line"
    "postlist_page_icon               file-check-corner"
    "postlist_active_icon             circle-dashed"
    "postlist_pendent_icon            cloud-upload"
    "postlist_conflict_icon           triangle-alert"
    "postlist_evernote_icon           notebook-text"
    "postlist_schedule_icon           clock"
    "postlist_published_icon_selected circle-check"
    "postlist_draft_icon_selected     pencil-line"
    "postlist_page_icon_selected      file-check-corner"
    "postlist_active_icon_selected    circle-dashed"
    "postlist_pendent_icon_selected   cloud-upload"
    "postlist_conflict_icon_selected  triangle-alert"
    "postlist_evernote_icon_selected  notebook-text"
    "postlist_schedule_icon_selected  clock"
    "postlist_private_icon            lock-keyhole"
    "postlist_private_icon_selected   lock-keyhole"
    "postlist_pending_icon            hourglass"
    "postlist_pending_icon_selected   hourglass"
    "postlist_upload_icon             loader"
    "postlist_upload_icon_selected    loader"
    "postlist_refresh                 refresh-cw"
    "postlist_search                  search"
    "postlist_clear                   x"
    "postlist_empty                   newspaper"
    "postlist_no_matches              search-x"
    # side bar and title bar
    "sidebar_icon_list                panel-left"
    "sidebar_icon_list_on             panel-left"
    "sidebar_icon_new                 square-pen"
    "sidebar_icon_media               image-plus"
    "wordpress_favicon                globe"
    "selector_arrow                   chevrons-up-down"
    # compose screen
    "editor_publish_button            send"
    "editor_publish_button_down       send"
    "editor_update_button             cloud-upload"
    "editor_update_button_down        cloud-upload"
    "editor_schedule_button           calendar-clock"
    "editor_schedule_button_down      calendar-clock"
    "editor_save_button               save"
    "editor_delete_button             trash-2"
    "editor_button_calendar_off       calendar"
    "editor_button_calendar_press     calendar"
    "editor_button_calendar_published calendar-check"
    "editor_button_calendar_active    calendar-clock"
    "token_remove                     x"
    "editor_insert_media_button       image-plus"
    "editor_notice                    triangle-alert"
    "editor_token_field               tags"
    # sheets and alerts
    "sheet_blog                       globe"
    "sheet_login                      lock-keyhole"
    "sheet_warning                    triangle-alert"
    "sheet_success                    circle-check"
    "sheet_write                      feather"
    "sheet_publish                    send"
    "sheet_list                       panel-left"
    # menus
    "menu_more                        chevrons-right"
    "menu_bold                        bold"
    "menu_italic                      italic"
    "menu_underline                   underline"
    "menu_strikethrough               strikethrough"
    "menu_ordered_list                list-ordered"
    "menu_unordered_list              list"
    "menu_link                        link"
)

# zalmo_icons(OUT)   writes the resource list and gives its path
function(zalmo_icons out)
    if(NOT EXISTS ${ZALMO_ICON_SET})
        message(FATAL_ERROR "The icon set is not there. Run `npm ci` in ${PROJECT_SOURCE_DIR} first.")
    endif()
    set(files "    <file alias=\"zalmo.svg\">${PROJECT_SOURCE_DIR}/resources/icons/zalmo.svg</file>\n")
    foreach(row IN LISTS ZALMO_ICONS)
        string(REGEX MATCH "^([^ ]+) +([^ ]+) *$" matched "${row}")
        set(name ${CMAKE_MATCH_1})
        set(drawing ${ZALMO_ICON_SET}/${CMAKE_MATCH_2}.svg)
        if(NOT matched OR NOT EXISTS ${drawing})
            message(FATAL_ERROR "No drawing for the icon \"${row}\"")
        endif()
        string(APPEND files "    <file alias=\"${name}.svg\">${drawing}</file>\n")
    endforeach()
    file(CONFIGURE OUTPUT ${PROJECT_BINARY_DIR}/generated/zalmo_icons.qrc @ONLY
        CONTENT "<RCC>\n  <qresource prefix=\"/icons\">\n${files}  </qresource>\n</RCC>\n")
    set(${out} ${PROJECT_BINARY_DIR}/generated/zalmo_icons.qrc PARENT_SCOPE)
endfunction()
