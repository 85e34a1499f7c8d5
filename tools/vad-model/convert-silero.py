#!/usr/bin/env python3
"""Writes Silero VAD's 16 kHz weights (the safetensors file of the silero-vad package) in
the ggml form that whisper.cpp's voice-activity stage loads.

    convert-silero.py SAFETENSORS OUTPUT [VERSION]

Plain Python: a safetensors file is an 8-byte header length, a JSON header and raw
little-endian data, and struct packs half floats, so neither torch nor numpy is needed.
The tensor names, their order, the shapes (reversed, as ggml counts dimensions) and the
types are those whisper.cpp's loader expects; convolution weights and the STFT basis are
float16, everything else float32."""

import json
import os
import struct
import sys
import tempfile

# (name in the package, name whisper.cpp looks up, float16?)
TENSORS = [
    ("conv1.weight", "_model.encoder.0.reparam_conv.weight", True),
    ("conv1.bias", "_model.encoder.0.reparam_conv.bias", False),
    ("conv2.weight", "_model.encoder.1.reparam_conv.weight", True),
    ("conv2.bias", "_model.encoder.1.reparam_conv.bias", False),
    ("conv3.weight", "_model.encoder.2.reparam_conv.weight", True),
    ("conv3.bias", "_model.encoder.2.reparam_conv.bias", False),
    ("conv4.weight", "_model.encoder.3.reparam_conv.weight", True),
    ("conv4.bias", "_model.encoder.3.reparam_conv.bias", False),
    ("lstm_cell.weight_ih", "_model.decoder.rnn.weight_ih", False),
    ("lstm_cell.weight_hh", "_model.decoder.rnn.weight_hh", False),
    ("lstm_cell.bias_ih", "_model.decoder.rnn.bias_ih", False),
    ("lstm_cell.bias_hh", "_model.decoder.rnn.bias_hh", False),
    ("final_conv.weight", "_model.decoder.decoder.2.weight", True),
    ("final_conv.bias", "_model.decoder.decoder.2.bias", False),
    ("stft_conv.weight", "_model.stft.forward_basis_buffer", True),
]

ENCODER_IN = [129, 128, 64, 64]
ENCODER_OUT = [128, 64, 64, 128]


def read_safetensors(path):
    with open(path, "rb") as f:
        (length,) = struct.unpack("<Q", f.read(8))
        header = json.loads(f.read(length))
        data = f.read()
    tensors = {}
    for name, info in header.items():
        if name == "__metadata__":
            continue
        if info["dtype"] != "F32":
            raise SystemExit(f"{name}: expected F32, found {info['dtype']}")
        begin, end = info["data_offsets"]
        count = (end - begin) // 4
        tensors[name] = (info["shape"], struct.unpack(f"<{count}f", data[begin:end]))
    return tensors


def ggml_shape(name, shape):
    # The STFT basis keeps all three dimensions; the others drop those of size one, as the
    # loader's shapes do (the output bias is then a scalar with no dimension at all).
    if name == "stft_conv.weight":
        dims = list(shape)
    else:
        dims = [d for d in shape if d != 1]
    return list(reversed(dims))


def convert(source, output, version):
    tensors = read_safetensors(source)
    major, minor, patch = (int(p) for p in version.split("."))
    out = bytearray()
    out += struct.pack("<i", 0x67676D6C)
    kind = b"silero-16k"
    out += struct.pack("<i", len(kind)) + kind
    out += struct.pack("<3i", major, minor, patch)
    out += struct.pack("<2i", 512, 64)  # window and context, in samples
    out += struct.pack("<i", len(ENCODER_IN))
    for i, o in zip(ENCODER_IN, ENCODER_OUT):
        out += struct.pack("<3i", i, o, 3)
    out += struct.pack("<2i", 128, 128)  # LSTM input and hidden size
    out += struct.pack("<2i", 128, 1)  # final convolution in and out
    for source_name, name, half in TENSORS:
        if source_name not in tensors:
            raise SystemExit(f"{source}: no tensor {source_name}")
        shape, values = tensors[source_name]
        dims = ggml_shape(source_name, shape)
        encoded = name.encode()
        out += struct.pack("<3i", len(dims), len(encoded), 1 if half else 0)
        out += struct.pack(f"<{len(dims)}i", *dims)
        out += encoded
        out += struct.pack(f"<{len(values)}{'e' if half else 'f'}", *values)
    # Written beside the target and renamed, so that no half-written model is ever seen.
    folder = os.path.dirname(os.path.abspath(output))
    fd, temporary = tempfile.mkstemp(dir=folder, prefix=".vad-")
    try:
        os.fchmod(fd, 0o644)
        with os.fdopen(fd, "wb") as f:
            f.write(out)
        os.replace(temporary, output)
    except BaseException:
        os.unlink(temporary)
        raise


if __name__ == "__main__":
    if len(sys.argv) not in (3, 4):
        raise SystemExit(__doc__)
    convert(sys.argv[1], sys.argv[2], sys.argv[3] if len(sys.argv) == 4 else "6.2.0")
