"""@summary@
This is the hardware's model.

    import @module@
    @module@.evaluate(@example@)        # numbers
    @module@.evaluate_bits(@example_bits@)   # bits, as simulators have them

Each gives the outputs by name, LATENCY enabled cycles before the hardware does. @module@.cpp must stand beside
this file; the first import compiles it with $CXX, c++, g++ or clang++.
"""
import collections
import ctypes
import hashlib
import os
import pathlib
import platform
import shlex
import shutil
import subprocess
import tempfile

LATENCY = @latency@  # enabled cycles from startin to startout

# Every port and its format: boolean, integer (32 bits), single or double.
INPUTS = {@inputs@}
OUTPUTS = {@outputs@}

Outputs = collections.namedtuple("Outputs", OUTPUTS)

# How C has a format's bits, and the number that they stand for.
_BITS = {"boolean": ctypes.c_uint8, "integer": ctypes.c_uint32, "single": ctypes.c_uint32, "double": ctypes.c_uint64}
_NUMBERS = {"boolean": ctypes.c_bool, "integer": ctypes.c_int32, "single": ctypes.c_float, "double": ctypes.c_double}
_WIDTHS = {"boolean": 1, "integer": 32, "single": 32, "double": 64}


def evaluate(**inputs):
    """The outputs for inputs that are numbers. What is too precise for a port is rounded as C does."""
    outputs = evaluate_bits(**{name: to_bits(INPUTS[name], number) if name in INPUTS else number
                               for name, number in inputs.items()})
    return Outputs(*(from_bits(kind, bits) for kind, bits in zip(OUTPUTS.values(), outputs)))


def evaluate_bits(**inputs):
    """The bits of the outputs for those of the inputs, whole numbers from 0 on."""
    if inputs.keys() != INPUTS.keys():
        wrong = sorted(inputs.keys() ^ INPUTS.keys())
        raise TypeError(f"the inputs are {', '.join(INPUTS)}; too many or missing: {', '.join(wrong)}")
    for name, bits in inputs.items():
        if not 0 <= bits < 1 << _WIDTHS[INPUTS[name]]:
            raise ValueError(f"{name} has {_WIDTHS[INPUTS[name]]} bits, {bits} does not fit")
    given = _InputStructure(**inputs)
    delivered = _OutputStructure()
    _model(ctypes.byref(given), ctypes.byref(delivered))
    return Outputs(*(getattr(delivered, name) for name in OUTPUTS))


def to_bits(kind, number):
    """The bits of a number in a format."""
    return _BITS[kind].from_buffer(_NUMBERS[kind](number)).value


def from_bits(kind, bits):
    """The number that bits of a format stand for."""
    return _NUMBERS[kind].from_buffer(_BITS[kind](bits)).value


def _structure(ports):
    # C puts a member into a structure that has none.
    fields = [(name, _BITS[kind]) for name, kind in ports.items()] or [("_unused", ctypes.c_char)]
    return type("Ports", (ctypes.Structure,), {"_fields_": fields})


def _compile(source, library):
    """Compiles the source; the library is there only when it is whole."""
    given = os.environ.get("CXX")
    compilers = [given] if given else [name for name in ("c++", "g++", "clang++") if shutil.which(name)]
    if not compilers:
        raise ImportError(f"{source.name} needs a C++ compiler: install g++ or name one in CXX")
    handle, unfinished = tempfile.mkstemp(dir=library.parent, suffix=".so")
    os.close(handle)
    try:
        done = subprocess.run([*shlex.split(compilers[0]), "-std=c++17", "-O2", "-shared", "-fPIC", str(source), "-o",
                               unfinished], capture_output=True, text=True, check=False)
        if done.returncode != 0:
            raise ImportError(f"{compilers[0]} does not compile {source}:\n{done.stderr}")
        os.replace(unfinished, library)
    except OSError as failed:
        raise ImportError(f"{compilers[0]} does not run: {failed}") from failed
    finally:
        if os.path.exists(unfinished):
            os.unlink(unfinished)


def _load():
    """The compiled model. It is kept beside Python's own compiled modules, under a name that follows the source."""
    source = pathlib.Path(__file__).resolve().with_name("@module@.cpp")
    header = source.with_suffix(".h")
    content = hashlib.sha256(source.read_bytes() + header.read_bytes() + platform.platform().encode())
    name = f"@module@-{content.hexdigest()[:16]}.so"
    folder = source.parent / "__pycache__"
    try:
        folder.mkdir(exist_ok=True)
        writable = os.access(folder, os.W_OK)
    except OSError:
        writable = False
    if writable or (folder / name).exists():
        if not (folder / name).exists():
            _compile(source, folder / name)
        return ctypes.CDLL(str(folder / name))
    with tempfile.TemporaryDirectory() as private:
        _compile(source, pathlib.Path(private) / name)
        return ctypes.CDLL(os.path.join(private, name))


_InputStructure = _structure(INPUTS)
_OutputStructure = _structure(OUTPUTS)
_model = _load().@module@
_model.restype = None
