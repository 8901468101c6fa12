-- One divided by an IEEE single, correctly rounded to nearest for every operand; no quotient is halfway between two
-- numbers. Subnormal numbers and results are zero, 1 / 0 is infinite, both with the operand's sign.
--   step unpack:  the operand's significand times three; what is special; the result's exponent
--   step digit:   a base 4 digit of 2 / significand a cycle, the last one with the bit behind the fraction
--   step round:   one carry chain, the quotient being too far below 2 to reach it; fraction of a special result
-- Latency 14 cycles: a register behind unpack, each of the 12 digits, and round. `synthesize` changes nothing.
library ieee;
use ieee.std_logic_1164.all;
use ieee.numeric_std.all;

entity fp_inv is
  generic (synthesize : natural);
  port (sysclk, reset, enable : in std_logic;
        signin : in std_logic;
        exponentin : in std_logic_vector(8 downto 1);
        mantissain : in std_logic_vector(23 downto 1);
        signout : out std_logic;
        exponentout : out std_logic_vector(8 downto 1);
        mantissaout : out std_logic_vector(23 downto 1));
end fp_inv;

architecture rtl of fp_inv is
  constant exponent_bits    : positive := 8;
  constant fraction_bits    : positive := 23;
  constant significand_bits : positive := fraction_bits + 1;
  constant digits           : positive := 12;
  constant quotient_bits    : positive := 2 * digits + 1;        -- hidden one, fraction, one to round
  constant state_bits       : positive := 3 * significand_bits + 1 + quotient_bits;
  constant aside_bits       : positive := exponent_bits + 3;     -- sign, nan, special, exponent of the result
  constant largest_power    : positive := 254;   -- of two whose reciprocal is no zero, as a field, and one more

  subtype exponent_field is std_logic_vector(exponent_bits - 1 downto 0);
  subtype fraction_field is std_logic_vector(fraction_bits - 1 downto 0);
  subtype state_field is std_logic_vector(state_bits - 1 downto 0);
  subtype aside_field is std_logic_vector(aside_bits - 1 downto 0);
  -- What is known behind the step unpack and each digit.
  type state_array is array (0 to digits) of state_field;
  type aside_array is array (0 to digits) of aside_field;
  constant all_ones : exponent_field := (others => '1');
  constant hidden_one : std_logic_vector(quotient_bits - 1 downto 0) := (0 => '1', others => '0');

  -- unpack
  signal zero, power_of_two, infinite_or_nan, nan, too_small, special, low_is_zero : std_logic;
  signal result_exponent : exponent_field;
  signal inverse_exponent : unsigned(exponent_bits - 1 downto 0);
  signal aside_d : aside_field;
  signal divisor, remainder : unsigned(significand_bits - 1 downto 0);
  signal triple : unsigned(significand_bits + 1 downto 0);
  signal not_a_power : std_logic_vector(0 downto 0);
  signal unpack_d : state_field;

  -- digit
  signal states : state_array;
  signal asides : aside_array;

  -- round
  signal quotient : std_logic_vector(quotient_bits - 1 downto 0);
  signal round_special : std_logic;
  signal rounded, fraction : fraction_field;
  signal rounded_d, result : std_logic_vector(exponent_bits + fraction_bits downto 0);
begin
  assert synthesize <= 1 report "fp_inv: synthesize is 0 or 1" severity failure;

  -- unpack
  zero <= '1' when unsigned(exponentin) = 0 else '0';
  power_of_two <= '1' when unsigned(mantissain) = 0 else '0';
  not_a_power(0) <= not power_of_two;
  infinite_or_nan <= '1' when exponentin = all_ones else '0';
  nan <= infinite_or_nan and not power_of_two;
  -- The exponent field of a power of two and of any other number add up to 254 and 253.
  inverse_exponent <= to_unsigned(largest_power, exponent_bits) - unsigned(exponentin) - unsigned(not_a_power);
  too_small <= '1' when infinite_or_nan = '1' or unsigned(exponentin) = largest_power or
                        (unsigned(exponentin) = largest_power - 1 and power_of_two = '0') else '0';
  result_exponent <= (others => '1') when (nan or zero) = '1' else
                     (others => '0') when too_small = '1' else std_logic_vector(inverse_exponent);
  special <= zero or too_small or power_of_two;
  aside_d <= (signin and not nan) & nan & special & result_exponent;
  divisor <= unsigned('1' & mantissain);
  triple <= resize(divisor, significand_bits + 2) + unsigned(std_logic_vector'(std_logic_vector(divisor) & '0'));
  -- Two less the divisor, below the divisor: the quotient's hidden one is taken off.
  remainder <= to_unsigned(0, significand_bits) - divisor;
  low_is_zero <= '1' when divisor(1 downto 0) = 0 else '0';
  unpack_d <= std_logic_vector(remainder) & std_logic_vector(not divisor) &
              std_logic_vector(not triple(significand_bits + 1 downto 2)) & low_is_zero & hidden_one;

  unpack_0 : entity work.xfc_register generic map (state_bits, 1) port map (sysclk, enable, unpack_d, states(0));
  unpack_1 : entity work.xfc_register generic map (aside_bits, 1) port map (sysclk, enable, aside_d, asides(0));

  -- digit
  each : for known in 1 to digits generate
    next_digit : entity work.xfc_divide_digit generic map (significand_bits, quotient_bits, 1)
      port map (sysclk, enable, states(known - 1), states(known));
    digit_0 : entity work.xfc_register generic map (aside_bits, 1)
      port map (sysclk, enable, asides(known - 1), asides(known));
  end generate;

  -- round
  quotient <= states(digits)(quotient_bits - 1 downto 0);
  round_special <= asides(digits)(exponent_bits);
  rounded <= std_logic_vector(unsigned(quotient(fraction_bits downto 1)) + unsigned(quotient(0 downto 0)));
  fraction(fraction_bits - 1) <= asides(digits)(exponent_bits + 1) when round_special = '1' else
                                 rounded(fraction_bits - 1);
  fraction(fraction_bits - 2 downto 0) <= (others => '0') when round_special = '1' else
                                          rounded(fraction_bits - 2 downto 0);
  rounded_d <= asides(digits)(aside_bits - 1) & asides(digits)(exponent_bits - 1 downto 0) & fraction;

  round_0 : entity work.xfc_register generic map (1 + exponent_bits + fraction_bits, 1)
    port map (sysclk, enable, rounded_d, result);
  signout <= result(exponent_bits + fraction_bits);
  exponentout <= result(exponent_bits + fraction_bits - 1 downto fraction_bits);
  mantissaout <= result(fraction_bits - 1 downto 0);
end rtl;
