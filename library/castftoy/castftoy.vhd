-- Converts an IEEE single to YDouble: for a multiplier or divider (target 0) or for an adder (target 1). Exact, so
-- roundconvert changes nothing, nor does mantissa; a subnormal number is zero.
--   step unpack:   flags, hidden one, the double's bias; ones' complement of a negative number for an adder
--   step convert:  one more makes it the two's complement, sign bits in front; others take sign and magnitude
--   step deliver:  the cycle that a divider behind it asks for
-- Latency 2 + divider cycles: the third register stands behind deliver.
library ieee;
use ieee.std_logic_1164.all;
use ieee.numeric_std.all;

entity castftoy is
  generic (target : natural; roundconvert : natural; mantissa : positive; divider : natural := 0);
  port (sysclk, reset, enable : in std_logic;
        aa : in std_logic_vector(32 downto 1);
        cc : out std_logic_vector(10 * target + 67 downto 1);
        ccsat, cczip, ccnan : out std_logic);
end castftoy;

architecture rtl of castftoy is
  constant ieee_exponent    : positive := 11;                    -- of a double
  constant fraction_bits    : positive := 23;
  constant significand_bits : positive := fraction_bits + 1;
  constant bias_difference  : positive := 896;
  constant tail             : std_logic_vector(52 - fraction_bits - 1 downto 0) := (others => '0');

  subtype exponent_field is std_logic_vector(ieee_exponent - 1 downto 0);
  subtype significand_field is std_logic_vector(significand_bits - 1 downto 0);
  subtype mark_field is std_logic_vector(3 downto 0);            -- sign, nan, zip, sat

  -- unpack
  signal exponent_is_zero, exponent_is_ones, fraction_is_zero : std_logic;
  signal exponent_d, exponent : exponent_field;
  signal marks_d, marks : mark_field;
  signal significand_d, significand : significand_field;

  -- convert
  signal increment : unsigned(0 downto 0);
  signal sum_d, sum : significand_field;
  signal convert_exponent : exponent_field;
  signal convert_marks : mark_field;

  -- deliver
  signal exponent_cc : exponent_field;
  signal marks_cc : mark_field;
  signal significand_cc : significand_field;
  signal front : std_logic_vector(4 downto 0);
begin
  assert target <= 1 report "castftoy: target is 0 or 1" severity failure;
  assert roundconvert <= 1 report "castftoy: roundconvert is 0 or 1" severity failure;
  assert mantissa = 32 or mantissa = 36 report "castftoy: mantissa is 32 or 36" severity failure;
  assert divider <= 1 report "castftoy: divider is 0 or 1" severity failure;

  -- unpack
  exponent_is_zero <= '1' when unsigned(aa(31 downto 24)) = 0 else '0';
  exponent_is_ones <= '1' when unsigned(aa(31 downto 24)) = 255 else '0';
  fraction_is_zero <= '1' when unsigned(aa(fraction_bits downto 1)) = 0 else '0';
  marks_d <= aa(32) & (exponent_is_ones and not fraction_is_zero) & exponent_is_zero &
             (exponent_is_ones and fraction_is_zero);
  exponent_d <= std_logic_vector(resize(unsigned(aa(31 downto 24)), ieee_exponent) + bias_difference);
  significand_d <= not ('1' & aa(fraction_bits downto 1)) when target = 1 and aa(32) = '1' else
                   '1' & aa(fraction_bits downto 1);

  unpack_0 : entity work.xfc_register generic map (ieee_exponent, 1) port map (sysclk, enable, exponent_d, exponent);
  unpack_1 : entity work.xfc_register generic map (4, 1) port map (sysclk, enable, marks_d, marks);
  unpack_2 : entity work.xfc_register generic map (significand_bits, 1)
    port map (sysclk, enable, significand_d, significand);

  -- convert: the significand is never zero, so nothing is carried into the sign
  increment <= unsigned(marks(3 downto 3)) when target = 1 else "0";
  sum_d <= std_logic_vector(unsigned(significand) + increment);

  convert_0 : entity work.xfc_register generic map (ieee_exponent, 1)
    port map (sysclk, enable, exponent, convert_exponent);
  convert_1 : entity work.xfc_register generic map (4, 1) port map (sysclk, enable, marks, convert_marks);
  convert_2 : entity work.xfc_register generic map (significand_bits, 1) port map (sysclk, enable, sum_d, sum);

  -- deliver
  deliver_0 : entity work.xfc_register generic map (ieee_exponent, divider)
    port map (sysclk, enable, convert_exponent, exponent_cc);
  deliver_1 : entity work.xfc_register generic map (4, divider) port map (sysclk, enable, convert_marks, marks_cc);
  deliver_2 : entity work.xfc_register generic map (significand_bits, divider)
    port map (sysclk, enable, sum, significand_cc);

  front <= (others => marks_cc(3));
  for_adders : if target = 1 generate
    cc <= front & significand_cc & tail & "000000" & "00" & exponent_cc;
  end generate;
  for_others : if target = 0 generate
    cc <= marks_cc(3) & significand_cc & tail & "00" & exponent_cc;
  end generate;
  ccsat <= marks_cc(0);
  cczip <= marks_cc(1);
  ccnan <= marks_cc(2);
end rtl;
