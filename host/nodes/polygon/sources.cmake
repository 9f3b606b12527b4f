foreach(folder creators shape texture topology)
    include(${CMAKE_CURRENT_LIST_DIR}/${folder}/sources.cmake)
endforeach()
