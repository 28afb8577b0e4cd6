// Numbers that the resource script and the window code share. The commands' own numbers stand in
// the command table; a test holds the script against it.
#pragma once

#define ID_FRAME 1000  // icon, menu and accelerator table
#define ID_DOCUMENT_ICON 1001

#define ID_POPUP_RECENT_TEXTURES 1001
#define ID_POPUP_FAVOURITE_TEXTURES 1002
#define ID_POPUP_RENDER_MODE 1003
#define ID_POPUP_TREE_ITEM 1004
#define ID_POPUP_MAP_MODE 1005
#define ID_POPUP_TOUCH_UP 1006
#define ID_POPUP_NEW_VIEW 1007
#define ID_POPUP_FACE_EDIT 1008
#define ID_POPUP_LAYER 1009
#define ID_POPUP_TREE_FILTER 1010
#define ID_POPUP_SELECTION 1011
#define ID_POPUP_EMBED 1012

#define ID_TIPS 1023
#define ID_TIPS_TEXT 100
#define ID_TIPS_NEXT 101
#define ID_TIPS_AT_START 102
#define ID_TIPS_HEADING 103

#define ID_ABOUT 1024

#define ID_FORM 1025
#define ID_FORM_VALUE 100  // the first of as many as there are fields

#define ID_LAYERS 1030
#define ID_LAYER_LIST 100
#define ID_LAYER_ADD 101
#define ID_LAYER_RENAME 102
#define ID_LAYER_COLOUR 103
#define ID_LAYER_REMOVE 104
#define ID_LAYER_MAKE_CURRENT 105
#define ID_LAYER_SELECT 106
#define ID_LAYER_MOVE_IN 107
#define ID_LAYER_PROPERTIES 108

#define ID_COMPILE 1031
#define ID_COMPILE_QBSP 100
#define ID_COMPILE_NO_FILL 101
#define ID_COMPILE_ONLY_ENTITIES 102
#define ID_COMPILE_QBSP_VERBOSE 103
#define ID_COMPILE_NO_WAIT 104
#define ID_COMPILE_LIGHT 105
#define ID_COMPILE_EXTRA 106
#define ID_COMPILE_VIS 107
#define ID_COMPILE_VIS_FAST 108
#define ID_COMPILE_VIS_VERBOSE 109
#define ID_COMPILE_GAME 110
#define ID_COMPILE_MEMORY 111
#define ID_COMPILE_ONLY_VISIBLE 112
#define ID_COMPILE_AUTO_CLOSE 113
#define ID_COMPILE_LEVEL 120  // the first of four
#define ID_COMPILE_THREADS_ENABLED 124
#define ID_COMPILE_THREADS 125
#define ID_COMPILE_THREAD_BUTTON 126  // the first of four
#define ID_COMPILE_QBSP_PARAMS 130
#define ID_COMPILE_LIGHT_PARAMS 131
#define ID_COMPILE_VIS_PARAMS 132
#define ID_COMPILE_QUAKE_PARAMS 133
#define ID_COMPILE_PROFILE 140
#define ID_COMPILE_KEEP 141
#define ID_COMPILE_DELETE 142
#define ID_COMPILE_COPY 143
#define ID_COMPILE_PASTE 144
#define ID_COMPILE_STANDARD 145

// Of the overview of a compile.
#define ID_OVERVIEW_CANCEL 100
#define ID_OVERVIEW_SAVE 101
#define ID_OVERVIEW_TIME 102
#define ID_OVERVIEW_LIST 103
#define ID_OVERVIEW_OUTPUT 104

#define ID_INFO 1032
#define ID_INFO_NAME 100
#define ID_INFO_BRUSHES 101
#define ID_INFO_ENTITIES 102
#define ID_INFO_LIGHTS 103
#define ID_INFO_FACES 104
#define ID_INFO_STARTS 105
#define ID_INFO_MODIFIED 106
#define ID_INFO_MAP_FILE 107
#define ID_INFO_MAP_DATE 108
#define ID_INFO_MAP_TIME 109
#define ID_INFO_BSP_FILE 110
#define ID_INFO_BSP_DATE 111
#define ID_INFO_BSP_TIME 112
#define ID_INFO_MORE 113
#define ID_INFO_BSP 114
#define ID_INFO_EXITS 115
#define ID_INFO_EDGE 116  // where the right half begins

// Of the window of a check.
#define ID_CHECK_LIST 100
#define ID_CHECK_STRICT 101
#define ID_CHECK_STATE 102
#define ID_CHECK_REPAIR 103

#define ID_TOOLBAR_BITMAP 2200
#define ID_TURN_CURSOR 2201

// Of a 2D view's window.
#define ID_CONTROLS 400
#define ID_MAP_MODE_BUTTON 401
#define ID_GRID_SNAP_BUTTON 402
#define ID_MESSAGE_TEXT 403
#define ID_COORDINATES_TEXT 404
#define ID_ZOOM_TEXT 405
#define ID_DRAWING 406

// Above every command, so that the Window menu's list of windows has numbers of its own.
#define ID_FIRST_CHILD 60000
