-- Multiplies an IEEE number by two to the power `places`, a signed integer: exact, or infinite when too large and zero
-- when below the normal numbers, whatever `places` is. Subnormal operands are zero; nan is the quiet one.
--   step clamp:  places to the range that matters, one bit more than exponents have, either way; flags
--   step scale:  the sum of the exponents, range and flags
-- Latency 2 cycles: a register behind each step.
library ieee;
use ieee.std_logic_1164.all;
use ieee.numeric_std.all;

entity xfc_scale_ieee is
  generic (exponent_bits : positive; fraction_bits : positive);
  port (sysclk, enable, sign : in std_logic;
        exponent_in : in std_logic_vector(exponent_bits - 1 downto 0);
        fraction_in : in std_logic_vector(fraction_bits - 1 downto 0);
        places : in std_logic_vector(32 downto 1);
        scaled : out std_logic_vector(exponent_bits + fraction_bits downto 0));
end xfc_scale_ieee;

architecture rtl of xfc_scale_ieee is
  constant clamped_bits  : positive := exponent_bits + 2;        -- two's complement
  constant wide_bits     : positive := exponent_bits + 3;        -- of the sum

  -- clamp
  signal clamped_d, clamped : std_logic_vector(clamped_bits - 1 downto 0);
  signal exponent : std_logic_vector(exponent_bits - 1 downto 0);
  signal fraction : std_logic_vector(fraction_bits - 1 downto 0);
  signal exponent_is_zero, ones, fraction_is_zero : std_logic;
  signal marks_d, marks : std_logic_vector(3 downto 0);          -- sign, nan, zip, sat

  -- scale
  signal sum : std_logic_vector(wide_bits - 1 downto 0);
  signal packed_d : std_logic_vector(exponent_bits + fraction_bits downto 0);
begin
  -- clamp
  clamped_d(clamped_bits - 1) <= places(32);
  clamped_d(clamped_bits - 2 downto 0) <=
    (others => '1') when signed(places) >= 2 ** (clamped_bits - 1) else
    (others => '0') when signed(places) < -(2 ** (clamped_bits - 1)) else places(clamped_bits - 1 downto 1);
  ones <= '1' when unsigned(exponent_in) = 2 ** exponent_bits - 1 else '0';
  exponent_is_zero <= '1' when unsigned(exponent_in) = 0 else '0';
  fraction_is_zero <= '1' when unsigned(fraction_in) = 0 else '0';
  marks_d <= sign & (ones and not fraction_is_zero) & exponent_is_zero & (ones and fraction_is_zero);

  clamp_0 : entity work.xfc_register generic map (clamped_bits, 1) port map (sysclk, enable, clamped_d, clamped);
  clamp_1 : entity work.xfc_register generic map (exponent_bits, 1) port map (sysclk, enable, exponent_in, exponent);
  clamp_2 : entity work.xfc_register generic map (fraction_bits, 1) port map (sysclk, enable, fraction_in, fraction);
  clamp_3 : entity work.xfc_register generic map (4, 1) port map (sysclk, enable, marks_d, marks);

  -- scale
  sum <= std_logic_vector(signed(resize(unsigned(exponent), wide_bits)) + signed(clamped));
  pack : entity work.xfc_pack_ieee generic map (exponent_bits, fraction_bits, wide_bits)
    port map (sum, fraction, marks, packed_d);

  scale_0 : entity work.xfc_register generic map (exponent_bits + fraction_bits + 1, 1)
    port map (sysclk, enable, packed_d, scaled);
end rtl;
