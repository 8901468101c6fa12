-- Adds two products of xfc_mulfp1_dot, or subtracts the second when addsub is 1: the common part xfc_add_xfloat, as in
-- xfc_alufp1x. Products up to 4 use up one guard bit, and the sum is halved when it uses up the last.
-- Latency 3 + shiftspeed + outputpipe cycles.
library ieee;
use ieee.std_logic_1164.all;

entity xfc_alufp1_dot is
  generic (mantissa : positive; shiftspeed : natural; outputpipe : natural);
  port (sysclk, reset, enable, addsub : in std_logic;
        aa : in std_logic_vector(mantissa + 10 downto 1);
        aasat, aazip, aanan : in std_logic;
        bb : in std_logic_vector(mantissa + 10 downto 1);
        bbsat, bbzip, bbnan : in std_logic;
        cc : out std_logic_vector(mantissa + 10 downto 1);
        ccsat, cczip, ccnan : out std_logic);
end xfc_alufp1_dot;

architecture rtl of xfc_alufp1_dot is
begin
  add : entity work.xfc_add_xfloat generic map (mantissa, shiftspeed, outputpipe)
    port map (sysclk, reset, enable, addsub, aa, aasat, aazip, aanan, bb, bbsat, bbzip, bbnan, cc, ccsat, cczip, ccnan);
end rtl;
