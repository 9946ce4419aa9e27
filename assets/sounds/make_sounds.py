#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Makes the four sounds of the program, beside this file: a soft kalimba in C major, dry, mono, 44.1 kHz, 16 bit.

Run it without arguments. The result is the same bytes on every run, so the sounds are kept in the tree.
"""

import math
import struct
import wave
from pathlib import Path

RATE = 44100
PEAK = 10 ** (-9 / 20)  # -9 dB below full scale
FADE = 0.005  # seconds at both ends

PITCHES = {"C4": 261.63, "G4": 392.00, "C5": 523.25, "E5": 659.26, "G5": 783.99, "C6": 1046.50}

# A kalimba's tongue: times the pitch, loudness, seconds until it has sunk to 37 %. The upper partials of a clamped
# tongue are far off the octave; they make the pluck and are gone at once.
PARTIALS = ((1.0, 1.0, 0.30), (2.0, 0.10, 0.16), (5.95, 0.16, 0.045), (14.3, 0.04, 0.012))


class Noise:
    """Random numbers from -1 to 1 that are the same on every run."""

    def __init__(self):
        self.state = 20260101

    def __call__(self):
        self.state = (self.state * 1103515245 + 12345) % 2**31
        return self.state / 2**30 - 1


def add_note(samples, begin, pitch, loudness=1.0, ring=1.0):
    """Plucks a tongue at `begin` seconds; `ring` stretches how long it sounds."""
    first = round(begin * RATE)
    frequency = PITCHES[pitch]
    for index in range(first, len(samples)):
        time = (index - first) / RATE
        attack = min(1.0, time / 0.004)
        samples[index] += loudness * attack * sum(
            level * math.exp(-time / (decay * ring)) * math.sin(2 * math.pi * factor * frequency * time)
            for factor, level, decay in PARTIALS)


def add_click(samples, begin, loudness, body):
    """A wooden latch: a short knock with a little noise; `body` is the pitch of the wood."""
    first = round(begin * RATE)
    noise = Noise()
    for index in range(first, min(len(samples), first + RATE // 10)):
        time = (index - first) / RATE
        wood = math.exp(-time / 0.010) * math.sin(2 * math.pi * body * time)
        wood += 0.5 * math.exp(-time / 0.006) * math.sin(2 * math.pi * body * 2.76 * time)
        samples[index] += loudness * min(1.0, time / 0.0005) * (wood + 0.25 * math.exp(-time / 0.002) * noise())


def save(name, samples):
    """Fades both ends, brings the peak to its level and writes the file."""
    fade = round(FADE * RATE)
    for index in range(fade):
        samples[index] *= index / fade
        samples[-1 - index] *= index / fade
    scale = PEAK / max(abs(sample) for sample in samples)
    data = b"".join(struct.pack("<h", round(sample * scale * 32767)) for sample in samples)
    with wave.open(str(Path(__file__).parent / name), "wb") as file:
        file.setnchannels(1)
        file.setsampwidth(2)
        file.setframerate(RATE)
        file.writeframes(data)


def silence(seconds):
    return [0.0] * round(seconds * RATE)


def main():
    welcome = silence(1.2)  # rising, the last note rings
    for begin, pitch, ring in ((0.01, "G4", 0.7), (0.19, "C5", 0.7), (0.37, "E5", 1.0)):
        add_note(welcome, begin, pitch, ring=ring)
    save("welcome.wav", welcome)

    shutdown = silence(1.8)  # the same notes falling, slower and softer from note to note
    for begin, pitch, loudness, ring in ((0.01, "E5", 1.0, 0.9), (0.36, "C5", 0.9, 0.9), (0.71, "G4", 0.8, 1.2)):
        add_note(shutdown, begin, pitch, loudness, ring)
    save("shutdowninprocess.wav", shutdown)

    granted = silence(0.5)  # a latch, and far below it one low note: a child next door should not notice
    add_click(granted, 0.01, 1.0, 420)
    add_click(granted, 0.055, 0.6, 350)
    add_note(granted, 0.07, "C4", 0.35, ring=0.45)
    save("accessgranted.wav", granted)

    complete = silence(0.9)  # quick
    for begin, pitch, loudness in ((0.01, "C5", 0.8), (0.12, "E5", 0.85), (0.23, "G5", 0.9), (0.34, "C6", 1.0)):
        add_note(complete, begin, pitch, loudness, ring=0.6)
    save("complete.wav", complete)


if __name__ == "__main__":
    main()
