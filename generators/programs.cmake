# Generated textures and audio. Each generator is a small program of ours; its outputs are made
# again only when the program changes.

# The generators run at build time on every configuration, so they are always optimised.
function(orane_generator_options target)
    orane_warnings(${target})
    target_compile_options(${target} PRIVATE -O2)
endfunction()

add_library(orane_assetgen_common STATIC ${CMAKE_CURRENT_SOURCE_DIR}/common/random.cpp)
target_include_directories(orane_assetgen_common PUBLIC ${CMAKE_CURRENT_SOURCE_DIR})
orane_generator_options(orane_assetgen_common)

add_library(orane_texturegen_painters STATIC
    texturegen/bloodpainter.cpp
    texturegen/deskpainter.cpp
    texturegen/floatimage.cpp
    texturegen/gradientnoise.cpp
    texturegen/iconpainter.cpp
    texturegen/paperpainter.cpp
    texturegen/scalarfield.cpp
    texturegen/shadowpainter.cpp
)
target_link_libraries(orane_texturegen_painters PUBLIC orane_assetgen_common sfml-graphics)
orane_generator_options(orane_texturegen_painters)

add_executable(orane_texturegen ${CMAKE_CURRENT_SOURCE_DIR}/texturegen/main.cpp)
target_link_libraries(orane_texturegen PRIVATE orane_texturegen_painters)
orane_generator_options(orane_texturegen)

set(ORANE_TEXTURES paper.png paper_blood_left.png paper_blood_right.png shadow.png
    game_background.png)
list(TRANSFORM ORANE_TEXTURES PREPEND ${ORANE_RESOURCES}/textures/ OUTPUT_VARIABLE ORANE_TEXTURE_OUTPUTS)
add_custom_command(
    OUTPUT ${ORANE_TEXTURE_OUTPUTS}
    COMMAND ${CMAKE_COMMAND} -E make_directory ${ORANE_RESOURCES}/textures
    COMMAND orane_texturegen ${ORANE_RESOURCES}/textures
    DEPENDS orane_texturegen
    COMMENT "Painting textures"
    VERBATIM)
list(APPEND ORANE_GENERATED_OUTPUTS ${ORANE_TEXTURE_OUTPUTS})

add_library(orane_audiogen_instruments STATIC
    audiogen/biquad.cpp
    audiogen/brushkit.cpp
    audiogen/chart.cpp
    audiogen/jazzloop.cpp
    audiogen/looptrack.cpp
    audiogen/noteframe.cpp
    audiogen/piano.cpp
    audiogen/pistolshot.cpp
    audiogen/reverb.cpp
    audiogen/score.cpp
    audiogen/sineoscillator.cpp
    audiogen/stereoloop.cpp
    audiogen/uprightbass.cpp
    audiogen/vibraphone.cpp
    audiogen/walkingbass.cpp
)
target_link_libraries(orane_audiogen_instruments PUBLIC orane_assetgen_common)
orane_generator_options(orane_audiogen_instruments)

add_executable(orane_audiogen ${CMAKE_CURRENT_SOURCE_DIR}/audiogen/main.cpp)
target_link_libraries(orane_audiogen PRIVATE orane_audiogen_instruments sfml-audio)
orane_generator_options(orane_audiogen)

set(ORANE_AUDIO_OUTPUTS
    ${ORANE_RESOURCES}/audio/sounds/shot_pistol.wav
    ${ORANE_RESOURCES}/audio/musics/WhiskyAndRevolver.ogg)
add_custom_command(
    OUTPUT ${ORANE_AUDIO_OUTPUTS}
    COMMAND ${CMAKE_COMMAND} -E make_directory ${ORANE_RESOURCES}/audio/sounds ${ORANE_RESOURCES}/audio/musics
    COMMAND orane_audiogen ${ORANE_RESOURCES}/audio
    DEPENDS orane_audiogen
    COMMENT "Recording the pistol shot and the music"
    VERBATIM)
list(APPEND ORANE_GENERATED_OUTPUTS ${ORANE_AUDIO_OUTPUTS})

# The game's icon at every size of the hicolor theme, for installing; the desktop names it so.
set(ORANE_ICON_NAME games.orane.Orane)
set(ORANE_ICON_SIZES 16 22 24 32 48 64 128 256 512)
set(ORANE_ICONS ${CMAKE_BINARY_DIR}/icons)
add_executable(orane_icongen ${CMAKE_CURRENT_SOURCE_DIR}/icongen/main.cpp)
target_link_libraries(orane_icongen PRIVATE orane_texturegen_painters)
orane_generator_options(orane_icongen)
set(ORANE_ICON_OUTPUTS)
foreach(size IN LISTS ORANE_ICON_SIZES)
    list(APPEND ORANE_ICON_OUTPUTS ${ORANE_ICONS}/${size}x${size}/apps/${ORANE_ICON_NAME}.png)
endforeach()
add_custom_command(
    OUTPUT ${ORANE_ICON_OUTPUTS}
    COMMAND orane_icongen ${ORANE_ICONS} ${ORANE_ICON_NAME}
    DEPENDS orane_icongen
    COMMENT "Painting the icon"
    VERBATIM)
add_custom_target(orane_icons ALL DEPENDS ${ORANE_ICON_OUTPUTS})
