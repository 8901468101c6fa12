-- Multiplies an IEEE single by two to the power bb, a signed integer: exact, or infinite when too large and zero when
-- below the normal numbers, for every bb. Subnormal operands are zero; nan is the quiet one.
--   step clamp:  bb to the range that matters, -2 ** 9 to 2 ** 9 - 1; flags
--   step scale:  the sum of the exponents, range and flags
-- Latency 2 cycles: a register behind each step.
library ieee;
use ieee.std_logic_1164.all;
use ieee.numeric_std.all;

entity fp_ldexp is
  port (sysclk, reset, enable : in std_logic;
        signin : in std_logic;
        exponentin : in std_logic_vector(8 downto 1);
        mantissain : in std_logic_vector(23 downto 1);
        bb : in std_logic_vector(32 downto 1);
        signout : out std_logic;
        exponentout : out std_logic_vector(8 downto 1);
        mantissaout : out std_logic_vector(23 downto 1));
end fp_ldexp;

architecture rtl of fp_ldexp is
  constant exponent_bits : positive := 8;
  constant fraction_bits : positive := 23;
  constant clamped_bits  : positive := exponent_bits + 2;        -- two's complement
  constant wide_bits     : positive := exponent_bits + 3;        -- of the sum

  -- clamp
  signal clamped_d, clamped : std_logic_vector(clamped_bits - 1 downto 0);
  signal exponent : std_logic_vector(exponent_bits - 1 downto 0);
  signal fraction : std_logic_vector(fraction_bits - 1 downto 0);
  signal exponent_is_zero, ones, fraction_is_zero : std_logic;
  signal marks_d, marks : std_logic_vector(3 downto 0);          -- sign, nan, zip, sat

  -- scale
  signal scaled : std_logic_vector(wide_bits - 1 downto 0);
  signal packed_d, packed_number : std_logic_vector(exponent_bits + fraction_bits downto 0);
begin
  -- clamp
  clamped_d(clamped_bits - 1) <= bb(32);
  clamped_d(clamped_bits - 2 downto 0) <=
    (others => '1') when signed(bb) >= 2 ** (clamped_bits - 1) else
    (others => '0') when signed(bb) < -(2 ** (clamped_bits - 1)) else bb(clamped_bits - 1 downto 1);
  ones <= '1' when unsigned(exponentin) = 2 ** exponent_bits - 1 else '0';
  exponent_is_zero <= '1' when unsigned(exponentin) = 0 else '0';
  fraction_is_zero <= '1' when unsigned(mantissain) = 0 else '0';
  marks_d <= signin & (ones and not fraction_is_zero) & exponent_is_zero & (ones and fraction_is_zero);

  clamp_0 : entity work.xfc_register generic map (clamped_bits, 1) port map (sysclk, enable, clamped_d, clamped);
  clamp_1 : entity work.xfc_register generic map (exponent_bits, 1) port map (sysclk, enable, exponentin, exponent);
  clamp_2 : entity work.xfc_register generic map (fraction_bits, 1) port map (sysclk, enable, mantissain, fraction);
  clamp_3 : entity work.xfc_register generic map (4, 1) port map (sysclk, enable, marks_d, marks);

  -- scale
  scaled <= std_logic_vector(signed(resize(unsigned(exponent), wide_bits)) + signed(clamped));
  pack : entity work.xfc_pack_ieee generic map (exponent_bits, fraction_bits, wide_bits)
    port map (scaled, fraction, marks, packed_d);

  scale_0 : entity work.xfc_register generic map (exponent_bits + fraction_bits + 1, 1)
    port map (sysclk, enable, packed_d, packed_number);
  signout <= packed_number(exponent_bits + fraction_bits);
  exponentout <= packed_number(exponent_bits + fraction_bits - 1 downto fraction_bits);
  mantissaout <= packed_number(fraction_bits - 1 downto 0);
end rtl;
