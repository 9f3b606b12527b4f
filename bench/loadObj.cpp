// The peer: loads an .obj file with tinyobjloader and prints what it holds.
#define TINYOBJLOADER_IMPLEMENTATION
#include <tiny_obj_loader.h>

#include <cstdio>

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::fputs("usage: bench_load_obj scene.obj\n", stderr);
        return 2;
    }
    tinyobj::ObjReader reader;
    if (!reader.ParseFromFile(argv[1])) {
        std::fprintf(stderr, "%s\n", reader.Error().c_str());
        return 1;
    }
    std::size_t corners = 0;
    for (const tinyobj::shape_t& shape : reader.GetShapes()) {
        corners += shape.mesh.indices.size();
    }
    std::printf("%zu positions, %zu corners\n", reader.GetAttrib().vertices.size() / 3, corners);
    return 0;
}
