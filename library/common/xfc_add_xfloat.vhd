-- Adds two XFloat values in adder form, or subtracts the second when addsub is 1: the common part xfc_add_internal with
-- one carry chain, whose header says how. A sum of two converted IEEE singles, converted back, is correctly rounded.
-- Latency 3 + shiftspeed + outputpipe cycles: the fourth register is that behind carry, the fifth behind difference.
library ieee;
use ieee.std_logic_1164.all;

entity xfc_add_xfloat is
  generic (mantissa : positive; shiftspeed : natural; outputpipe : natural);
  port (sysclk, reset, enable, addsub : in std_logic;
        aa : in std_logic_vector(mantissa + 10 downto 1);
        aasat, aazip, aanan : in std_logic;
        bb : in std_logic_vector(mantissa + 10 downto 1);
        bbsat, bbzip, bbnan : in std_logic;
        cc : out std_logic_vector(mantissa + 10 downto 1);
        ccsat, cczip, ccnan : out std_logic);
end xfc_add_xfloat;

architecture rtl of xfc_add_xfloat is
  constant difference_border : natural := (shiftspeed + outputpipe) / 2;
  constant carry_border      : natural := (shiftspeed + outputpipe + 1) / 2;
begin
  assert mantissa = 32 or mantissa = 36 report "xfc_add_xfloat: mantissa is 32 or 36" severity failure;
  assert shiftspeed <= 1 report "xfc_add_xfloat: shiftspeed is 0 or 1" severity failure;
  assert outputpipe <= 1 report "xfc_add_xfloat: outputpipe is 0 or 1" severity failure;

  add : entity work.xfc_add_internal generic map (mantissa, 10, 0, difference_border, 0, carry_border)
    port map (sysclk, enable, addsub, aa, aasat, aazip, aanan, bb, bbsat, bbzip, bbnan, cc, ccsat, cczip, ccnan);
end rtl;
