-- Shifts an integer of 32 bits by the low five bits of bb: left, right with copies of the sign, right with zeros for
-- direction 0 to 2. A bit in front of the integer says what a shift to the right brings in.
--   step coarse:  by whole bytes
--   step fine:    by single bits
-- Latency 2 cycles: a register behind each step.
library ieee;
use ieee.std_logic_1164.all;

entity xfc_shiftlong is
  generic (direction : natural);
  port (sysclk, reset, enable : in std_logic;
        aa : in std_logic_vector(32 downto 1);
        bb : in std_logic_vector(32 downto 1);
        cc : out std_logic_vector(32 downto 1));
end xfc_shiftlong;

architecture rtl of xfc_shiftlong is
  constant width : positive := 32;

  -- coarse
  signal front : std_logic;
  signal whole, coarse_d, coarse : std_logic_vector(width downto 0);
  signal distance : std_logic_vector(2 downto 0);

  -- fine
  signal fine_d : std_logic_vector(width downto 0);
begin
  assert direction <= 2 report "xfc_shiftlong: direction is 0 to 2" severity failure;

  -- coarse
  front <= aa(width) when direction = 1 else '0';
  whole <= front & aa;

  coarse_0 : entity work.xfc_register generic map (width + 1, 1) port map (sysclk, enable, coarse_d, coarse);
  coarse_1 : entity work.xfc_register generic map (3, 1) port map (sysclk, enable, bb(3 downto 1), distance);

  -- fine
  to_the_left : if direction = 0 generate
    shift_coarse : entity work.xfc_shift_left generic map (width + 1, 2, 8)
      port map (whole, bb(5 downto 4), '0', coarse_d);
    shift_fine : entity work.xfc_shift_left generic map (width + 1, 3, 1) port map (coarse, distance, '0', fine_d);
  end generate;
  to_the_right : if direction > 0 generate
    shift_coarse : entity work.xfc_shift_right generic map (width + 1, 2, 8)
      port map (whole, bb(5 downto 4), '0', coarse_d, open);
    shift_fine : entity work.xfc_shift_right generic map (width + 1, 3, 1)
      port map (coarse, distance, '0', fine_d, open);
  end generate;

  fine_0 : entity work.xfc_register generic map (width, 1) port map (sysclk, enable, fine_d(width - 1 downto 0), cc);
end rtl;
