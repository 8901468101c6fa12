-- Converts a signed integer of 32 bits to an IEEE single: nearest, to even between two. The integer is a mantissa of
-- 32 bits in adder form under one constant exponent, and the common part xfc_round_xfloat rounds it.
-- Latency 3 + 2 * normspeed cycles.
library ieee;
use ieee.std_logic_1164.all;
use ieee.numeric_std.all;

entity xfc_castltof is
  generic (normspeed : positive);
  port (sysclk, reset, enable : in std_logic;
        aa : in std_logic_vector(32 downto 1);
        cc : out std_logic_vector(32 downto 1));
end xfc_castltof;

architecture rtl of xfc_castltof is
  -- The exponent of a mantissa whose lowest bit is 1.
  constant integer_exponent : std_logic_vector(9 downto 0) := std_logic_vector(to_unsigned(127 + 26, 10));
  signal fixed : std_logic_vector(42 downto 1);
begin
  fixed <= aa & integer_exponent;
  round : entity work.xfc_round_xfloat generic map (32, normspeed)
    port map (sysclk, reset, enable, fixed, '0', '0', '0', cc);
end rtl;
