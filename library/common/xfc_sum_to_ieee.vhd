-- Makes an IEEE number of an unsigned sum whose leading one stands in a window at its top, in four cycles.
--   step count:  leading zeros
--   step shift:  shift left by them
--   step round:  to nearest, into the exponent
--   step pack:   marks
-- `zeros_before`, what the sum has been shifted left by already, is read in the step shift, `marks` in the step pack.
library ieee;
use ieee.std_logic_1164.all;
use ieee.numeric_std.all;

entity xfc_sum_to_ieee is
  generic (exponent_bits  : positive;   -- of the IEEE format
           fraction_bits  : positive;
           sum_bits       : positive;   -- more than fraction_bits + 1
           window_bits    : positive;   -- of the sum
           window_levels  : positive;   -- bits of the window's count of zeros
           zero_levels    : positive;   -- bits of zeros_before
           first_exponent : positive);  -- of the sum's highest bit
  port (sysclk, enable : in std_logic;
        sum           : in std_logic_vector(sum_bits - 1 downto 0);
        zeros_before  : in std_logic_vector(zero_levels - 1 downto 0);
        marks         : in std_logic_vector(3 downto 0);   -- sign, nan, zip, sat
        packed_number : out std_logic_vector(exponent_bits + fraction_bits downto 0));
end xfc_sum_to_ieee;

architecture rtl of xfc_sum_to_ieee is
  constant operand_bits : positive := 1 + exponent_bits + fraction_bits;
  constant wide_bits    : positive := exponent_bits + 2;   -- as xfc_pack_ieee asks for

  -- count
  signal zeros_d, zeros : std_logic_vector(window_levels - 1 downto 0);
  signal counted : std_logic_vector(sum_bits - 1 downto 0);

  -- shift
  signal shifted_d : std_logic_vector(sum_bits - 1 downto 0);
  signal exponent_d, exponent : std_logic_vector(exponent_bits - 1 downto 0);
  signal shifted : std_logic_vector(fraction_bits downto 0);

  -- round
  signal rounded_d, rounded : std_logic_vector(exponent_bits + fraction_bits - 1 downto 0);

  -- pack
  signal wide_exponent : std_logic_vector(wide_bits - 1 downto 0);
  signal packed_d : std_logic_vector(operand_bits - 1 downto 0);
begin
  -- count
  count_zeros : entity work.xfc_leading_zeros generic map (window_bits, window_levels)
    port map (sum(sum_bits - 1 downto sum_bits - window_bits), zeros_d);
  count_0 : entity work.xfc_register generic map (window_levels, 1) port map (sysclk, enable, zeros_d, zeros);
  count_1 : entity work.xfc_register generic map (sum_bits, 1) port map (sysclk, enable, sum, counted);

  -- shift
  shift_sum : entity work.xfc_shift_left generic map (sum_bits, window_levels, 1)
    port map (counted, zeros, '0', shifted_d);
  exponent_d <=
    std_logic_vector(to_unsigned(first_exponent, exponent_bits) - unsigned(zeros) - unsigned(zeros_before));

  shift_0 : entity work.xfc_register generic map (fraction_bits + 1, 1)
    port map (sysclk, enable, shifted_d(sum_bits - 2 downto sum_bits - 2 - fraction_bits), shifted);
  shift_1 : entity work.xfc_register generic map (exponent_bits, 1) port map (sysclk, enable, exponent_d, exponent);

  -- round
  rounded_d <= std_logic_vector(unsigned(exponent & shifted(fraction_bits downto 1)) + unsigned(shifted(0 downto 0)));

  round_0 : entity work.xfc_register generic map (exponent_bits + fraction_bits, 1)
    port map (sysclk, enable, rounded_d, rounded);

  -- pack
  wide_exponent <= "00" & rounded(exponent_bits + fraction_bits - 1 downto fraction_bits);
  pack_result : entity work.xfc_pack_ieee generic map (exponent_bits, fraction_bits, wide_bits)
    port map (wide_exponent, rounded(fraction_bits - 1 downto 0), marks, packed_d);

  pack_0 : entity work.xfc_register generic map (operand_bits, 1) port map (sysclk, enable, packed_d, packed_number);
end rtl;
