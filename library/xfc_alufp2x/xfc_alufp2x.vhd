-- Adds two YDouble values in adder form, or subtracts the second when addsub is 1: the common part xfc_add_internal with
-- the sum in two halves, whose header says how. A sum of two converted IEEE doubles, converted back, is correctly
-- rounded.
-- Latency 4 + shiftspeed + doublespeed cycles: a register behind order, align, carry and settle always, another behind
-- difference with shiftspeed, another behind add with doublespeed. synthesize changes nothing.
library ieee;
use ieee.std_logic_1164.all;

entity xfc_alufp2x is
  generic (shiftspeed : natural; doublespeed : natural; synthesize : natural);
  port (sysclk, reset, enable, addsub : in std_logic;
        aa : in std_logic_vector(77 downto 1);
        aasat, aazip, aanan : in std_logic;
        bb : in std_logic_vector(77 downto 1);
        bbsat, bbzip, bbnan : in std_logic;
        cc : out std_logic_vector(77 downto 1);
        ccsat, cczip, ccnan : out std_logic);
end xfc_alufp2x;

architecture rtl of xfc_alufp2x is
begin
  assert shiftspeed <= 1 report "xfc_alufp2x: shiftspeed is 0 or 1" severity failure;
  assert doublespeed <= 1 report "xfc_alufp2x: doublespeed is 0 or 1" severity failure;
  assert synthesize <= 1 report "xfc_alufp2x: synthesize is 0 or 1" severity failure;

  add : entity work.xfc_add_internal generic map (64, 13, 1, shiftspeed, doublespeed, 1)
    port map (sysclk, enable, addsub, aa, aasat, aazip, aanan, bb, bbsat, bbzip, bbnan, cc, ccsat, cczip, ccnan);
end rtl;
