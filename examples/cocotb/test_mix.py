"""The hardware of mix.c against its model, in any simulator that cocotb runs: see the Makefile."""
import collections
import random

import cocotb
import mix_model
from cocotb.clock import Clock
from cocotb.triggers import RisingEdge

VECTORS = 500


class Scoreboard:
    """Told what stands on the ports in front of each rising edge, it holds the outputs against the model's."""

    def __init__(self, model):
        self.model = model
        self.awaited = collections.deque()  # outputs to come, and the cycle in which they do
        self.cycle = 0  # those with enable
        self.compared = 0

    def edge(self, enable, startin, inputs, startout, outputs):
        """Inputs and outputs are bits by port; outputs are asked for when they are due."""
        if not enable:
            return
        due = bool(self.awaited) and self.awaited[0][0] == self.cycle
        assert bool(startout) == due, f"cycle {self.cycle}: startout is {startout}"
        if due:
            _, given, expected = self.awaited.popleft()
            seen = outputs()
            assert seen == expected, f"{given} gives {seen}, the model {expected}"
            self.compared += 1
        if startin:
            self.awaited.append((self.cycle + self.model.LATENCY, inputs, self.model.evaluate_bits(**inputs)))
        self.cycle += 1


def random_inputs(pick):
    """Bits for every port: numbers near 1 most of the time, else whatever 32 bits may mean."""
    def draw():
        return mix_model.to_bits("single", pick.uniform(-2, 2)) if pick.random() < 0.8 else pick.getrandbits(32)

    return {port: draw() for port in mix_model.INPUTS}


@cocotb.test()
async def hardware_equals_model(dut):
    """A vector in most cycles, with gaps in startin and pauses of enable."""
    pick = random.Random(1)
    scoreboard = Scoreboard(mix_model)
    cocotb.start_soon(Clock(dut.sysclk, 10).start())

    dut.reset.value, dut.enable.value, dut.startin.value = 1, 0, 0
    for port in mix_model.INPUTS:
        getattr(dut, port).value = 0
    await RisingEdge(dut.sysclk)
    await RisingEdge(dut.sysclk)
    dut.reset.value = 0

    enable, startin, inputs = 0, 0, {}
    while scoreboard.compared < VECTORS:
        # Behind an edge the ports still have what they had in front of it.
        await RisingEdge(dut.sysclk)
        scoreboard.edge(enable, startin, inputs, int(dut.startout.value) if enable else 0,
                        lambda: mix_model.Outputs(*(int(getattr(dut, port).value) for port in mix_model.OUTPUTS)))
        enable, startin, inputs = int(pick.random() < 0.9), int(pick.random() < 0.8), random_inputs(pick)
        dut.enable.value, dut.startin.value = enable, startin
        for port, bits in inputs.items():
            getattr(dut, port).value = bits
