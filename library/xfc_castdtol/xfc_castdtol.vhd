-- Converts an IEEE double to an integer of 32 bits, toward zero as C does. Out of range it is the nearest end, nan is 0.
--   step unpack:      range, distance; the 31 highest bits of the significand are all that an integer has room for
--   step coarse:      shift right by whole bytes
--   step fine:        shift right by single bits; what goes over the edge is dropped
--   step complement:  ones' complement of a negative number
--   step negate:      one more
--   step settle:      the ends of the range
--   step deliver:     the seventh cycle
-- Latency 1 + normspeed and 1 cycle when neither roundconvert nor outputpipe is 1, else 2 + doublespeed * roundconvert
-- cycles, 3 to 7: registers behind unpack, fine and settle; a fourth stands behind coarse, then negate, complement,
-- deliver. roundconvert changes nothing else.
library ieee;
use ieee.std_logic_1164.all;
use ieee.numeric_std.all;

entity xfc_castdtol is
  generic (roundconvert : natural; outputpipe : natural; doublespeed : natural; normspeed : positive);
  port (sysclk, reset, enable : in std_logic;
        aa : in std_logic_vector(64 downto 1);
        cc : out std_logic_vector(32 downto 1));
end xfc_castdtol;

architecture rtl of xfc_castdtol is
  function cycles return positive is
  begin
    if roundconvert = 0 and outputpipe = 0 then
      return normspeed + 2;
    else
      return normspeed + 3 + doublespeed * roundconvert;
    end if;
  end cycles;
  constant magnitude_bits : positive := 31;
  constant latency        : positive := cycles;
  constant coarse_border     : natural := latency / 4;
  constant negate_border     : natural := latency / 5;
  constant complement_border : natural := latency / 6;
  constant deliver_border    : natural := latency / 7;

  subtype magnitude_field is std_logic_vector(magnitude_bits - 1 downto 0);
  subtype integer_field is std_logic_vector(magnitude_bits downto 0);
  subtype mark_field is std_logic_vector(1 downto 0);                           -- sign, beyond

  -- unpack
  signal exponent : unsigned(10 downto 0);
  signal nan, below_one, beyond : std_logic;
  signal distance_d, distance : std_logic_vector(4 downto 0);
  signal magnitude_d, magnitude : magnitude_field;
  signal marks_d, marks : mark_field;

  -- coarse
  signal coarse_d, coarse : magnitude_field;
  signal fine_distance : std_logic_vector(2 downto 0);
  signal coarse_marks : mark_field;

  -- fine
  signal whole_d, whole : magnitude_field;
  signal fine_marks : mark_field;

  -- complement
  signal complement_d, complement : integer_field;
  signal complement_marks : mark_field;

  -- negate
  signal negate_d, whole_signed : integer_field;
  signal negate_marks : mark_field;

  -- settle
  signal settled_d, settled : integer_field;
begin
  assert roundconvert <= 1 report "xfc_castdtol: roundconvert is 0 or 1" severity failure;
  assert outputpipe <= 1 report "xfc_castdtol: outputpipe is 0 or 1" severity failure;
  assert doublespeed <= 1 report "xfc_castdtol: doublespeed is 0 or 1" severity failure;
  assert normspeed <= 3 report "xfc_castdtol: normspeed is 1 to 3" severity failure;

  -- unpack: 1023 is the bias, 1053 the exponent of 2 to the power 30
  exponent <= unsigned(aa(63 downto 53));
  nan <= '1' when exponent = 2047 and unsigned(aa(52 downto 1)) /= 0 else '0';
  below_one <= '1' when exponent < 1023 or nan = '1' else '0';
  beyond <= '1' when exponent > 1053 and nan = '0' else '0';
  distance_d <= std_logic_vector(to_unsigned(29, 5) - exponent(4 downto 0));
  magnitude_d <= (others => '0') when below_one = '1' else '1' & aa(52 downto 23);
  marks_d <= aa(64) & beyond;

  unpack_0 : entity work.xfc_register generic map (5, 1) port map (sysclk, enable, distance_d, distance);
  unpack_1 : entity work.xfc_register generic map (magnitude_bits, 1)
    port map (sysclk, enable, magnitude_d, magnitude);
  unpack_2 : entity work.xfc_register generic map (2, 1) port map (sysclk, enable, marks_d, marks);

  -- coarse
  coarse_d <= std_logic_vector(shift_right(unsigned(magnitude), 8 * to_integer(unsigned(distance(4 downto 3)))));

  coarse_0 : entity work.xfc_register generic map (magnitude_bits, coarse_border)
    port map (sysclk, enable, coarse_d, coarse);
  coarse_1 : entity work.xfc_register generic map (3, coarse_border)
    port map (sysclk, enable, distance(2 downto 0), fine_distance);
  coarse_2 : entity work.xfc_register generic map (2, coarse_border)
    port map (sysclk, enable, marks, coarse_marks);

  -- fine
  whole_d <= std_logic_vector(shift_right(unsigned(coarse), to_integer(unsigned(fine_distance))));

  fine_0 : entity work.xfc_register generic map (magnitude_bits, 1) port map (sysclk, enable, whole_d, whole);
  fine_1 : entity work.xfc_register generic map (2, 1) port map (sysclk, enable, coarse_marks, fine_marks);

  -- complement
  complement_d <= not ('0' & whole) when fine_marks(1) = '1' else '0' & whole;

  complement_0 : entity work.xfc_register generic map (magnitude_bits + 1, complement_border)
    port map (sysclk, enable, complement_d, complement);
  complement_1 : entity work.xfc_register generic map (2, complement_border)
    port map (sysclk, enable, fine_marks, complement_marks);

  -- negate
  negate_d <= std_logic_vector(unsigned(complement) + unsigned(complement_marks(1 downto 1)));

  negate_0 : entity work.xfc_register generic map (magnitude_bits + 1, negate_border)
    port map (sysclk, enable, negate_d, whole_signed);
  negate_1 : entity work.xfc_register generic map (2, negate_border)
    port map (sysclk, enable, complement_marks, negate_marks);

  -- settle
  settled_d(magnitude_bits) <= negate_marks(1) when negate_marks(0) = '1' else whole_signed(magnitude_bits);
  settled_d(magnitude_bits - 1 downto 0) <= whole_signed(magnitude_bits - 1 downto 0) when negate_marks(0) = '0' else
                                            (others => '0') when negate_marks(1) = '1' else (others => '1');

  settle_0 : entity work.xfc_register generic map (magnitude_bits + 1, 1)
    port map (sysclk, enable, settled_d, settled);

  -- deliver
  deliver_0 : entity work.xfc_register generic map (magnitude_bits + 1, deliver_border)
    port map (sysclk, enable, settled, cc);
end rtl;
