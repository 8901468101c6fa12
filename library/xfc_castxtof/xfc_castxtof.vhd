-- Converts an XFloat value in adder form to an IEEE single: nearest, to even between two. What is below the smallest
-- normal number after rounding is zero, what is too large is infinite; nan is 7FC00000. Exponent field 0 is zero. The
-- common part xfc_round_xfloat does it; its header says how.
-- Latency 3 + 2 * normspeed cycles.
library ieee;
use ieee.std_logic_1164.all;

entity xfc_castxtof is
  generic (mantissa : positive; normspeed : positive);
  port (sysclk, reset, enable : in std_logic;
        aa : in std_logic_vector(mantissa + 10 downto 1);
        aasat, aazip, aanan : in std_logic;
        cc : out std_logic_vector(32 downto 1));
end xfc_castxtof;

architecture rtl of xfc_castxtof is
begin
  round : entity work.xfc_round_xfloat generic map (mantissa, normspeed)
    port map (sysclk, reset, enable, aa, aasat, aazip, aanan, cc);
end rtl;
