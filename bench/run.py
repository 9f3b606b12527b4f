#!/usr/bin/env python3
"""Benchmarks against public peers: all figures come from the same run, and ratios of medians are what counts.

  bench/run.py [--build build/release] [--runs 5] [--columns 770] [--binary-columns 1160] [--keep FOLDER]

Builds the benchmark programs first (packages: tools/install_packages.sh build bench). Prints one line per bar: the ratio,
the bar, and whether it is met. The exit status is 0 whether bars are met or not: a slow machine is no failure.
"""
import argparse
import os
import shutil
import statistics
import subprocess
import sys
import tempfile
import time

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))


class Timed:
    """Medians over several runs of a command: wall seconds and peak resident bytes."""

    def __init__(self, runs):
        self.seconds = statistics.median(seconds for seconds, _ in runs)
        self.peak = statistics.median(peak for _, peak in runs)


class Command:
    """A program with its arguments, and the file that it writes."""

    def __init__(self, arguments, output=None, env=None):
        self.arguments, self.output, self.env = arguments, output, env

    def run(self):
        # a new file each time: cutting an old one short waits until the disk has taken it
        if self.output and os.path.exists(self.output):
            os.remove(self.output)
        start = time.perf_counter()
        process = subprocess.Popen(self.arguments, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, env=self.env)
        _, status, usage = os.wait4(process.pid, 0)
        seconds = time.perf_counter() - start
        if status:
            sys.exit('failed (%d): %s' % (status, ' '.join(self.arguments)))
        return seconds, usage.ru_maxrss * 1024


def timed(runs, *commands):
    """Commands in turn, several times, so that all of them meet the same hours of a machine."""
    rounds = [[command.run() for command in commands] for _ in range(runs)]
    return [Timed(of_command) for of_command in zip(*rounds)]


def importer_arguments(settings):
    import base64
    return [base64.b64encode(('%d %s' % item).encode()).decode() for item in sorted(settings.items())]


def bar(name, ratio, limit, at_least=False):
    met = ratio >= limit if at_least else ratio <= limit
    print('%-58s %8.3f   bar %s %g   %s' % (name, ratio, '>=' if at_least else '<=', limit, 'met' if met else 'MISSED'))


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument('--build', default=os.path.join(ROOT, 'build', 'release'))
    parser.add_argument('--runs', type=int, default=5)
    parser.add_argument('--columns', type=int, default=770)
    parser.add_argument('--binary-columns', type=int, default=1160, help='of the mesh that is read as .mb and as .ma')
    parser.add_argument('--keep', help='keep the inputs in this folder')
    options = parser.parse_args()
    subprocess.check_call(['cmake', '-S', ROOT, '-B', options.build, '-G', 'Ninja', '-DCMAKE_BUILD_TYPE=Release',
                           '-DORV_BENCH=ON'], stdout=subprocess.DEVNULL)
    subprocess.check_call(['cmake', '--build', options.build, '--target', 'maya_importer', 'bench_make_scene',
                           'bench_load_obj', 'bench_empty_program', 'bench_read_rate', 'bench_decode_rate', 'bench_tessellate',
                           'bench_kernels'], stdout=subprocess.DEVNULL)
    program = lambda name: os.path.join(options.build, 'bin', name)
    folder = options.keep or tempfile.mkdtemp(prefix='vistrel-bench-')
    os.makedirs(folder, exist_ok=True)
    path = lambda name: os.path.join(folder, name)
    try:
        run(options, program, path)
    finally:
        if not options.keep:
            shutil.rmtree(folder)


def run(options, program, path):
    env = dict(os.environ, TMPDIR=os.path.dirname(path('x')))
    subprocess.check_call([program('bench_make_scene'), 'mesh', str(options.columns), path('mesh.ma'), path('mesh.obj')])
    size = os.path.getsize(path('mesh.ma'))
    print('mesh scene: %.1f MB of Maya ASCII, %.1f MB of .obj' % (size / 1e6, os.path.getsize(path('mesh.obj')) / 1e6))

    def convert(scene, output, settings=None):
        settings = {0: '7', 4: 'ERROR', 11: path(scene), 12: path(output), **(settings or {})}
        return Command([program('maya_importer')] + importer_arguments(settings), path(output), env)

    rates = subprocess.check_output([program('bench_read_rate'), path('mesh.ma')], text=True)
    print(rates, end='')
    ratio = float([line.split()[1] for line in rates.splitlines() if line.startswith('ratio')][0])
    bar('(a) reading rate / bare walk with fast_float', ratio, 0.8, at_least=True)

    ours, tiny = timed(options.runs, convert('mesh.ma', 'mesh.obx'), Command([program('bench_load_obj'), path('mesh.obj')]))
    output = os.path.getsize(path('mesh.obx'))
    print('whole conversion %.3f s, tinyobjloader load %.3f s' % (ours.seconds, tiny.seconds))
    bar('(b) whole conversion / tinyobjloader load of the .obj', ours.seconds / tiny.seconds, 1 / 3)
    if shutil.which('assimp'):
        assimp, = timed(1, Command(['assimp', 'export', path('mesh.obj'), path('mesh.glb')], path('mesh.glb')))
        print('assimp export %.3f s' % assimp.seconds)
        bar('(b) whole conversion / assimp export of the .obj to .glb', ours.seconds / assimp.seconds, 1 / 8)
    print('peak %.1f MB, input + output %.1f MB' % (ours.peak / 1e6, (size + output) / 1e6))
    bar('(c) peak memory / (input + output)', ours.peak / (size + output), 1.2)

    counts = (10000, 100000, 1000000)
    for count in counts:
        subprocess.check_call([program('bench_make_scene'), 'nodes', str(count), path('nodes%d.ma' % count)])
    per_node = []
    scenes = [convert('nodes%d.ma' % count, 'nodes%d.obx' % count) for count in counts]
    for count, nodes in zip(counts, timed(options.runs, *scenes)):
        per_node.append(nodes.seconds / count)
        print('%8d nodes: %.3f us a node, peak %.1f MB' % (count, per_node[-1] * 1e6, nodes.peak / 1e6))
    bar('(d) time a node, largest / smallest', max(per_node) / min(per_node), 1.5)

    with open(path('tiny.ma'), 'w') as tiny_scene:
        tiny_scene.write('//Maya ASCII 2018 scene\nrequires maya "2018";\ncreateNode transform -n "a";\n')
    empty, start = timed(50, Command([program('bench_empty_program')]), convert('tiny.ma', 'tiny.obx'))
    print('empty program %.2f ms, tiny scene %.2f ms' % (empty.seconds * 1e3, start.seconds * 1e3))
    bar('(e) tiny scene / empty program', start.seconds / empty.seconds, 10)
    sampling(options, program, path, convert)
    tessellation(program)
    operations(program, options.runs)
    binary(options, program, path, convert)


def binary(options, program, path, convert):
    """The same mesh scene as .mb and as .ma, number by number."""
    columns = str(options.binary_columns)
    subprocess.check_call([program('bench_make_scene'), 'binary', columns, path('twin.mb')])
    subprocess.check_call([program('bench_make_scene'), 'mesh', columns, path('twin.ma'), path('twin.obj')])
    os.remove(path('twin.obj'))
    rates = subprocess.check_output([program('bench_decode_rate'), path('twin.mb')], text=True)
    print(rates, end='')
    ratio = float([line.split()[1] for line in rates.splitlines() if line.startswith('ratio')][0])
    bar('(h) decoding rate of .mb / memcpy of the same bytes', ratio, 0.1, at_least=True)

    text, binary_form = timed(options.runs, convert('twin.ma', 'twin.ma.obx'), convert('twin.mb', 'twin.mb.obx'))
    with open(path('twin.ma.obx'), 'rb') as of_text, open(path('twin.mb.obx'), 'rb') as of_binary:
        if of_text.read().replace(b'twin.ma', b'twin.mb') != of_binary.read():
            sys.exit('the .mb and the .ma gave different scenes')
    size, output = os.path.getsize(path('twin.mb')), os.path.getsize(path('twin.mb.obx'))
    print('.mb of %.1f MB %.3f s, .ma of %.1f MB %.3f s; peak of the .mb %.1f MB, input + 1.2 x output %.1f MB'
          % (size / 1e6, binary_form.seconds, os.path.getsize(path('twin.ma')) / 1e6, text.seconds,
             binary_form.peak / 1e6, (size + 1.2 * output) / 1e6))
    bar('(i) whole conversion of the .ma / of its .mb twin', text.seconds / binary_form.seconds, 3, at_least=True)
    bar('(i) peak memory of the .mb / (input + 1.2 x output)', binary_form.peak / (size + 1.2 * output), 1)


def tessellation(program):
    """Triangles per second of surfaces, against evaluating a grid of the same density."""
    rates = subprocess.check_output([program('bench_tessellate')], text=True)
    print(rates, end='')
    ratios = dict(line.split() for line in rates.splitlines() if line.startswith('ratio-'))
    bar('(g) untrimmed tessellation / plain grid evaluation', float(ratios['ratio-untrimmed']), 0.5, at_least=True)
    bar('(g) trimmed tessellation / plain grid evaluation', float(ratios['ratio-trimmed']), 0.1, at_least=True)


def operations(program, runs):
    """What operations on meshes cost as the mesh grows, and chains of small ones."""
    figures = subprocess.check_output([program('bench_kernels'), str(runs)], text=True)
    print(figures, end='')
    ratios = dict(line.split() for line in figures.splitlines() if line.startswith(('chain-', 'growth-')))
    for name, ratio in ratios.items():
        if name.startswith('growth-') and name[7:] not in ('copy', 'opensubdiv'):  # those are what ours stands beside
            bar('(j) %s: time a face, 1 of 1,000,000 / 100 of 10,000' % name[7:], float(ratio), 1.5)
    bar('(k) 900 small edits of different kinds / one', float(ratios['chain-mixed']), 30)


def sampling(options, program, path, convert):
    """Microseconds for one sample of one transform: what sampling adds to the conversion of one frame."""
    frames, costs = 500, {}
    for count, others in ((1000, 0), (500, 0), (1000, 100000)):
        subprocess.check_call([program('bench_make_scene'), 'animated', str(count), str(others), str(frames),
                               path('animated.ma')])
        still, moving = timed(options.runs, convert('animated.ma', 'still.obx', {10: '1'}),
                              convert('animated.ma', 'animated.obx'))
        costs[count, others] = (moving.seconds - still.seconds) / (count * frames) * 1e6
        print('%4d animated transforms among %6d others, %d frames: %.3f s still, %.3f s sampled, %.3f us a sample'
              % (count, others, frames, still.seconds, moving.seconds, costs[count, others]))
    bar('(f) a sample among 1,000 / among 500 animated transforms', costs[1000, 0] / costs[500, 0], 1.5)
    bar('(f) a sample with / without 100,000 still transforms', costs[1000, 100000] / costs[1000, 0], 1.5)


if __name__ == '__main__':
    main()
