# Tests of the whole programs, in Python: whole.* on scenes of the project, corpus.* on those of the folder ORV_CORPUS.
# Windows programs run under the emulator of the tool chain and are compared with the native ones of build/release.
find_package(Python3 REQUIRED COMPONENTS Interpreter)

set(ORV_RUNNER "")
set(ORV_OTHER_IMPORTER "")
set(ORV_MUTATIONS 480)
set(ORV_SETTINGS_SHARE 2)
if(CMAKE_CROSSCOMPILING_EMULATOR)
    set(ORV_RUNNER --runner ${CMAKE_CROSSCOMPILING_EMULATOR})
    set(ORV_OTHER_IMPORTER --other ${PROJECT_SOURCE_DIR}/build/release/bin/maya_importer)
    set(ORV_MUTATIONS 160)
endif()
if(CMAKE_CROSSCOMPILING_EMULATOR OR ORV_SANITIZE)
    set(ORV_SETTINGS_SHARE 1)
endif()
file(GLOB ORV_EXAMPLES CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/examples/*.ma)
file(GLOB ORV_SEEDS CONFIGURE_DEPENDS ${CMAKE_CURRENT_LIST_DIR}/fuzz/ascii/seeds/*.ma
    ${CMAKE_CURRENT_LIST_DIR}/fuzz/binary/seeds/*.mb)

# script_test(NAME SCRIPT ARGUMENT...): a Python script of the project as a test; "skipped:" on a line counts as skipped.
function(script_test name script)
    add_test(NAME ${name} COMMAND ${Python3_EXECUTABLE} -B ${PROJECT_SOURCE_DIR}/${script} ${ARGN})
    set_tests_properties(${name} PROPERTIES TIMEOUT 1200 SKIP_REGULAR_EXPRESSION "skipped: ORV_CORPUS"
        ENVIRONMENT "WINEPREFIX=${CMAKE_BINARY_DIR}/wine")
endfunction()

script_test(layers tools/check_layers.py ${PROJECT_SOURCE_DIR})
script_test(tables tools/make_node_tables.py --check)
script_test(tables.typeCodes tools/make_type_codes.py --check)
script_test(whole.reader tests/whole/readerTest.py)
script_test(corpus.compareMesh tests/corpus/compareMeshTest.py)

if(TARGET maya_importer)
    script_test(whole.runSequence tests/whole/runSequence.py ${ORV_RUNNER} $<TARGET_FILE:maya_importer>)
    script_test(whole.sceneFiles tests/whole/sceneFiles.py ${ORV_RUNNER} $<TARGET_FILE:maya_importer>)
    script_test(whole.animatedScenes tests/whole/animatedScenes.py ${ORV_RUNNER} $<TARGET_FILE:maya_importer>)
    script_test(whole.layerScenes tests/whole/layerScenes.py ${ORV_RUNNER} $<TARGET_FILE:maya_importer>)
    script_test(whole.surfaceScenes tests/whole/surfaceScenes.py ${ORV_RUNNER} $<TARGET_FILE:maya_importer>)
    script_test(whole.sameBytes tests/whole/sameBytes.py ${ORV_RUNNER} --importer $<TARGET_FILE:maya_importer>
        ${ORV_OTHER_IMPORTER} ${ORV_EXAMPLES})
    script_test(whole.binaryTwins tests/whole/binaryTwins.py ${ORV_RUNNER} --importer $<TARGET_FILE:maya_importer> ${ORV_EXAMPLES})
    script_test(whole.mutated tests/whole/mutated.py ${ORV_RUNNER} --importer $<TARGET_FILE:maya_importer>
        -n ${ORV_MUTATIONS} --keep ${CMAKE_BINARY_DIR}/mutated_scenes ${ORV_EXAMPLES} ${ORV_SEEDS})
    script_test(corpus.scenes tests/corpus/corpusTest.py ${ORV_RUNNER} --importer $<TARGET_FILE:maya_importer>)
    script_test(corpus.layers tests/corpus/layersTest.py ${ORV_RUNNER} --importer $<TARGET_FILE:maya_importer>)
    script_test(corpus.settings tests/corpus/settingsTest.py ${ORV_RUNNER} --importer $<TARGET_FILE:maya_importer>
        --share ${ORV_SETTINGS_SHARE})
    set_tests_properties(whole.mutated corpus.scenes corpus.settings PROPERTIES PROCESSORS 2)
endif()
if(TARGET maya2vistrel)
    script_test(whole.command tests/whole/commandTest.py ${ORV_RUNNER} $<TARGET_FILE:maya2vistrel>)
endif()

foreach(folder corpus fuzz)
    if(EXISTS ${CMAKE_CURRENT_LIST_DIR}/${folder}/CMakeLists.txt AND ORV_MAYA STREQUAL "host")
        add_subdirectory(${CMAKE_CURRENT_LIST_DIR}/${folder} ${CMAKE_CURRENT_BINARY_DIR}/${folder})
    endif()
endforeach()

if(TARGET mesh_history AND TARGET maya_importer)
    script_test(corpus.history tests/corpus/historyTest.py ${ORV_RUNNER} --teller $<TARGET_FILE:mesh_history>
        --importer $<TARGET_FILE:maya_importer>)
endif()

if(TARGET print_plugs AND TARGET maya_importer)
    script_test(corpus.sameScene tests/corpus/sameScene.py ${ORV_RUNNER} --printer $<TARGET_FILE:print_plugs>
        --importer $<TARGET_FILE:maya_importer>)
    script_test(corpus.writtenTwins tests/corpus/sameScene.py ${ORV_RUNNER} --printer $<TARGET_FILE:print_plugs>
        --writer $<TARGET_FILE:write_binary> --importer $<TARGET_FILE:maya_importer>)
endif()
