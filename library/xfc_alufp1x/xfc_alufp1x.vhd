-- Adds two XFloat values in adder form, or subtracts the second when addsub is 1: the common part xfc_add_xfloat, whose
-- header says how. A sum of two converted IEEE singles, converted back, is correctly rounded.
-- Latency 3 + shiftspeed + outputpipe cycles.
library ieee;
use ieee.std_logic_1164.all;

entity xfc_alufp1x is
  generic (mantissa : positive; shiftspeed : natural; outputpipe : natural);
  port (sysclk, reset, enable, addsub : in std_logic;
        aa : in std_logic_vector(mantissa + 10 downto 1);
        aasat, aazip, aanan : in std_logic;
        bb : in std_logic_vector(mantissa + 10 downto 1);
        bbsat, bbzip, bbnan : in std_logic;
        cc : out std_logic_vector(mantissa + 10 downto 1);
        ccsat, cczip, ccnan : out std_logic);
end xfc_alufp1x;

architecture rtl of xfc_alufp1x is
begin
  add : entity work.xfc_add_xfloat generic map (mantissa, shiftspeed, outputpipe)
    port map (sysclk, reset, enable, addsub, aa, aasat, aazip, aanan, bb, bbsat, bbzip, bbnan, cc, ccsat, cczip, ccnan);
end rtl;
