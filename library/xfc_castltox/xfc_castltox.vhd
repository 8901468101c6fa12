-- Converts a signed integer of 32 bits to XFloat: for an adder (target 0), a multiplier (1) or a divider (2, sign and
-- magnitude). Exact: the highest bit of the number stands behind the sign, in adder form in the guard bits.
--   step magnitude:  a divider takes the magnitude
--   step normalize:  leading zeros, shift left, exponent
-- Latency 1 cycle: a register behind normalize.
library ieee;
use ieee.std_logic_1164.all;
use ieee.numeric_std.all;

entity xfc_castltox is
  generic (target : natural; mantissa : positive);
  port (sysclk, reset, enable : in std_logic;
        aa : in std_logic_vector(32 downto 1);
        cc : out std_logic_vector(mantissa + 10 downto 1);
        ccsat, cczip, ccnan : out std_logic);
end xfc_castltox;

architecture rtl of xfc_castltox is
  function guard_bits return natural is
  begin
    if target = 0 then return 4; else return 0; end if;
  end guard_bits;

  constant exponent_bits    : positive := 10;
  constant integer_bits     : positive := 32;
  constant magnitude_bits   : positive := integer_bits - 1;
  constant levels           : positive := 5;        -- enough to count and shift magnitude_bits
  constant highest_exponent : positive := 127 + magnitude_bits - 1 - guard_bits;

  -- magnitude
  signal sign, largest : std_logic;
  signal negates : std_logic_vector(0 downto 0);
  signal before_increment, converted : std_logic_vector(integer_bits - 1 downto 0);
  signal value : std_logic_vector(magnitude_bits - 1 downto 0);

  -- normalize
  signal counted, shifted : std_logic_vector(magnitude_bits - 1 downto 0);
  signal zeros : std_logic_vector(levels - 1 downto 0);
  signal zip_d, zip : std_logic_vector(0 downto 0);
  signal steps : unsigned(0 downto 0);
  signal exponent_d : std_logic_vector(exponent_bits - 1 downto 0);
  signal mantissa_d : std_logic_vector(mantissa - 1 downto 0);
begin
  assert target <= 2 report "xfc_castltox: target is 0, 1 or 2" severity failure;
  assert mantissa = 32 or mantissa = 36 report "xfc_castltox: mantissa is 32 or 36" severity failure;

  -- magnitude: 2 ** 31 is half of it, one exponent higher
  sign <= aa(integer_bits);
  negates(0) <= sign when target = 2 else '0';
  before_increment <= not aa when negates = "1" else aa;
  converted <= std_logic_vector(unsigned(before_increment) + unsigned(negates));
  largest <= converted(integer_bits - 1) when target = 2 else '0';
  value <= (converted(magnitude_bits - 1) or largest) & converted(magnitude_bits - 2 downto 0);

  -- normalize
  counted <= not value when target /= 2 and sign = '1' else value;
  count_zeros : entity work.xfc_leading_zeros generic map (magnitude_bits, levels) port map (counted, zeros);
  shift : entity work.xfc_shift_left generic map (magnitude_bits, levels, 1) port map (value, zeros, '0', shifted);
  zip_d(0) <= '1' when shifted(magnitude_bits - 1) = '0' and (target = 2 or sign = '0') else '0';
  steps(0) <= largest;
  exponent_d <= std_logic_vector(to_unsigned(highest_exponent, exponent_bits) + steps - unsigned(zeros));
  mantissa_d(mantissa - 1 downto mantissa - integer_bits) <= sign & shifted;
  low_bits : if mantissa > integer_bits generate
    mantissa_d(mantissa - integer_bits - 1 downto 0) <= (others => '0');
  end generate;

  normalize_0 : entity work.xfc_register generic map (exponent_bits, 1)
    port map (sysclk, enable, exponent_d, cc(exponent_bits downto 1));
  normalize_1 : entity work.xfc_register generic map (mantissa, 1)
    port map (sysclk, enable, mantissa_d, cc(mantissa + exponent_bits downto exponent_bits + 1));
  normalize_2 : entity work.xfc_register generic map (1, 1) port map (sysclk, enable, zip_d, zip);
  cczip <= zip(0);
  ccsat <= '0';
  ccnan <= '0';
end rtl;
