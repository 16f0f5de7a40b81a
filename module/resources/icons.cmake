# The module's icons as Qt resources: each drawing of icons/ in its light form, its dark twin, and for the buttons
# that can be disabled two grey ones. The drawings name their colours as in the first column; each form puts its own in
# their places. The dialog has the light form in the dark theme, too: its lines are of a middle tone, which reads on both
# grounds. Dark twins have bright lines, with an edge that is not seen on a dark ground and holds them together on a
# light one.

#            drawing light   dark    disabled, disabled in the dark
set(palette "3b4252;707e99;d5dbe4;828a96;6d7684" # lines
            "ffffff;ffffff;2b2f36;ffffff;2b2f36" # paper
            "f5b301;f5b301;ffc933;e3e6ea;4b5361" # yellow
            "2374c6;2f80d4;5fb0ff;c3c9d1;5b6472" # blue
            "dd7d00;c87000;ffab40;c3c9d1;5b6472" # orange
            "2a9150;2d9455;4fc97c;828a96;6d7684" # green
            "cf3b3b;d94545;ff6b6b;828a96;6d7684" # red
            "8b95a3;808896;8d97a6;828a96;6d7684" # grey
            "dfe5ec;bcc4cf;4b5361;d3d8de;3a404a") # soft grey
set(dark_edge "2b2d30;3.2") # colour and width

# Drawing and resource name; "@" in a name is where the marks of the other forms go.
set(icons
    lock image_layerstate_lck@             unlock image_layerstate_unlck@
    on image_layerstate_on@                off image_layerstate_off@
    freeze image_layerstate_frz@           thaw image_layerstate_thw@
    plot image_layerstate_plot@            no_plot image_layerstate_unplot@
    current image_layerstate_current@
    used image_layerstate_used@            unused image_layerstate_unused@
    used_override image_layerstate_usedoverride@ unused_override image_layerstate_unusedoverride@
    vp_freeze image_layerstate_vpfrz@      vp_thaw image_layerstate_vpthw@
    vp_used image_layerstate_vpused@       vp_unused image_layerstate_vpunused@
    vp_current image_layerstate_vpcurrent@
    filter_new_property IDR_TOOLBAR_FILTER_@CREATE_PROPFILTER
    filter_new_group IDR_TOOLBAR_FILTER_@CREATE_GROUPFILTER
    layer_states IDR_TOOLBAR_FILTER_@STATE_LAYER
    layer_new IDR_TOOLBAR_LAYER_@CREATE
    layer_delete IDR_TOOLBAR_LAYER_@DEL
    layer_current IDR_TOOLBAR_LAYER_@CURRENT
    tree_all IDR_TREE_LAYERFILTER_@ALL
    tree_property IDR_TREE_LAYERFILTER_@PROPFILTER
    tree_group IDR_TREE_LAYERFILTER_@GROUPFILTER
    tree_xref IDR_TREE_LAYERFILTER_@XREF
    tree_viewport IDR_TREE_LAYERFILTER_@VP
    state_expand IDB_LSTATE_EXPAND@
    state_contract IDB_LSTATE_CONTRACT@
    state_add IDR_LSTATE_@ADD
    state_remove IDR_LSTATE_@DEL
    search IDB_LAYER_SEARCH
    search_close IDB_LAYER_SEARCHCLOSE)

set(icon_folder ${CMAKE_CURRENT_BINARY_DIR}/icons)
set(icon_files "")

# Puts the shapes of a drawing behind it once more, with the edge for strokes.
function(korvex_add_edge variable)
    list(GET dark_edge 0 color)
    list(GET dark_edge 1 width)
    string(FIND "${${variable}}" ">" end)
    math(EXPR end "${end} + 1")
    string(SUBSTRING "${${variable}}" 0 ${end} head)
    string(SUBSTRING "${${variable}}" ${end} -1 body)
    string(REPLACE "</svg>" "" shapes "${body}")
    string(REGEX REPLACE " stroke-width=\"[^\"]*\"" "" shapes "${shapes}")
    string(REGEX REPLACE " stroke=\"#[^\"]*\"" " stroke=\"##${color}\" stroke-width=\"${width}\"" shapes "${shapes}")
    set(${variable} "${head}${shapes}${body}" PARENT_SCOPE)
endfunction()

# Writes a drawing in the colours of a column of the palette, as a resource of that name.
function(korvex_icon drawing column name)
    file(READ ${CMAKE_CURRENT_SOURCE_DIR}/resources/icons/${drawing}.svg text)
    list(LENGTH palette length)
    math(EXPR last "${length} - 1")
    if(column EQUAL 2)
        korvex_add_edge(text)
    endif()
    foreach(first RANGE 0 ${last} 5)
        math(EXPR wanted "${first} + ${column}")
        list(GET palette ${first} from)
        list(GET palette ${wanted} to)
        string(REPLACE "\"#${from}\"" "\"##${to}\"" text "${text}") # two marks: not to be replaced again
    endforeach()
    string(REPLACE "\"##" "\"#" text "${text}")
    file(CONFIGURE OUTPUT ${icon_folder}/${name}.svg CONTENT "${text}" @ONLY)
    set(icon_files "${icon_files}  <file alias=\"${name}\">${name}.svg</file>\n" PARENT_SCOPE)
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS
        ${CMAKE_CURRENT_SOURCE_DIR}/resources/icons/${drawing}.svg)
endfunction()

list(LENGTH icons count)
math(EXPR last "${count} - 1")
foreach(at RANGE 0 ${last} 2)
    math(EXPR next "${at} + 1")
    list(GET icons ${at} drawing)
    list(GET icons ${next} name)
    string(REPLACE "@" "" light ${name})
    korvex_icon(${drawing} 1 ${light})
    if(name MATCHES "@$")
        string(REPLACE "@" "_dark" dark ${name})
        korvex_icon(${drawing} 2 ${dark})
    elseif(name MATCHES "@")
        string(REPLACE "@" "DARK_" dark ${name})
        korvex_icon(${drawing} 2 ${dark})
    endif()
    if(name MATCHES "TOOLBAR_LAYER_@")
        string(REPLACE "@" "DISABLE_" disabled ${name})
        string(REPLACE "@" "DISABLE_DARK_" disabled_dark ${name})
        korvex_icon(${drawing} 3 ${disabled})
        korvex_icon(${drawing} 4 ${disabled_dark})
    endif()
endforeach()

file(CONFIGURE OUTPUT ${icon_folder}/icons.qrc @ONLY
    CONTENT "<RCC>\n <qresource prefix=\"/KvLayerManager\">\n${icon_files} </qresource>\n</RCC>\n")
qt5_add_resources(icon_sources ${icon_folder}/icons.qrc)
