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

#define ID_OPTIONS 1040
#define ID_OPTIONS_TABS 100
#define ID_OPTIONS_UNDO 101

#define ID_OPTIONS_FILES 1041
#define ID_DEFAULT_WAD 200
#define ID_CHOOSE_WAD 201
#define ID_DEFAULT_QC 202
#define ID_CHOOSE_QC 203
#define ID_QUAKE_DIRECTORY 204
#define ID_CHOOSE_DIRECTORY 205
#define ID_QUAKE_EXECUTABLE 206
#define ID_CHOOSE_EXECUTABLE 207
#define ID_GROUPS_DIRECTORY 208
#define ID_CHOOSE_GROUPS 209
#define ID_BACKUPS 210
#define ID_AUTOSAVE_MINUTES 211
#define ID_WORLD_TYPE 212
#define ID_SOUNDS 213
#define ID_ONLY_ONE_WAD 214

#define ID_OPTIONS_MISC 1042
#define ID_GAMMA_RED 300
#define ID_GAMMA_GREEN 301
#define ID_GAMMA_BLUE 302
#define ID_TEXTURE_CACHE 303
#define ID_MIP_TYPE 304
#define ID_TEXTURE_SIZE 305
#define ID_TEXTURES_LARGER 306
#define ID_TEXTURES_SMALLER 307
#define ID_NO_TEXTURE_CAPTIONS 308
#define ID_UNDO_LEVELS 309
#define ID_UNDO_MEMORY 310
#define ID_ROTATION_STEP 311
#define ID_TRAY_SIZE 312
#define ID_DEFAULT_ENTITY 313
#define ID_BLACK_BACK 320
#define ID_ENTITY_NAMES 321
#define ID_LIGHT_RADIUS 322
#define ID_DRAW_TEMPLATES 323
#define ID_ENTITY_LINKS 324
#define ID_PALE_OTHERS 325
#define ID_LARGE_FONTS 326
#define ID_SMALL_CAPTIONS 327
#define ID_TOOLBAR_SHOWN 328
#define ID_TRACK_MOUSE 329
#define ID_SMART_SELECTION 330
#define ID_TEXTURE_LOCK 331
#define ID_TIPS_SHOWN 332

#define ID_OPTIONS_3D 1043
#define ID_USE_DIRECT3D 400
#define ID_USE_HARDWARE 401
#define ID_DITHER 402
#define ID_POINT_ENTITIES 403
#define ID_BACK_CLIP 404
#define ID_MOVE_METHOD 405
#define ID_USE_JOYSTICK 406
#define ID_JOYSTICK 407
#define ID_JOYSTICK_TYPE 408
#define ID_JOYSTICK_SPEED 409
#define ID_SWAP_PITCH 410

#define ID_OPTIONS_KEYS 1044
#define ID_FIRST_KEY 101  // two for each action: the first key and the second

#define ID_OPTIONS_BINDINGS 1045
#define ID_BOUND_LIST 500
#define ID_BIND 501
#define ID_UNBIND 502
#define ID_REBIND 503
#define ID_TO_BIND 504

#define ID_SET_KEY 1046
#define ID_KEY_ENTRY 100
#define ID_KEY_CHOICE 1000  // and the code of the key

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
