# Programs that bench/run.py uses beside the reader's own benchmark.
add_executable(bench_make_scene ${CMAKE_CURRENT_LIST_DIR}/makeScene.cpp)
add_executable(bench_empty_program ${CMAKE_CURRENT_LIST_DIR}/emptyProgram.cpp)
find_path(ORV_TINYOBJ NAMES tiny_obj_loader.h)
if(ORV_TINYOBJ)
    add_executable(bench_load_obj ${CMAKE_CURRENT_LIST_DIR}/loadObj.cpp)
    target_include_directories(bench_load_obj SYSTEM PRIVATE ${ORV_TINYOBJ})
endif()
